#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""Makes the pictures of the benchmark from what Debian's python3-skimage and xplanet-images ship.

    pictures.py FOLDER HARD_SIDE SIDE...

Writes mosaic-SIDE-CLASS for each SIDE (a multiple of 256) and the hard pictures of HARD_SIDE into FOLDER. A
file holds one line, "CLASS ROWS COLUMNS", and the pixels column by column, the order of a host's array. Files
that are newer than this script are kept.

A mosaic is made of different crops of photographs: pixels repeat where crops overlap or are channels of one
picture, but no crop is used twice. All sides draw from one shuffled list, so that they have the same mix and
differ in size alone.
"""
import functools
import itertools
import os
import pathlib
import random
import sys

import numpy as np
from PIL import Image
from scipy.ndimage import gaussian_filter

CROP = 256
GREEN = 1
PACKAGES = {
    "/usr/share/xplanet/images": "earth.jpg night.jpg",
    "/usr/lib/python3/dist-packages/skimage/data":
        "astronaut.png brick.png camera.png cell.png chelsea.png clock_motion.png coffee.png coins.png "
        "grass.png gravel.png hubble_deep_field.jpg ihc.png moon.png motorcycle_left.png "
        "motorcycle_right.png retina.jpg rocket.jpg",
}


def photographs(channel):
    """One channel of the coloured photographs, with the grey ones in place of a green channel."""
    for folder, names in PACKAGES.items():
        for name in names.split():
            pixels = np.asarray(Image.open(pathlib.Path(folder, name)))
            if pixels.ndim == 3:
                yield pixels[..., channel]
            elif channel == GREEN:
                yield pixels


def is_flat(crop):
    """Night, the sea, the rim of a lens, which cost less than structure: over 4 in 10 pixels equal their
    neighbour."""
    return np.mean(crop[:, 1:] == crop[:, :-1]) > 0.4


def grid_of_crops(channel, row_shift, col_shift):
    for picture in photographs(channel):
        for row in range(row_shift, picture.shape[0] - CROP + 1, CROP):
            for col in range(col_shift, picture.shape[1] - CROP + 1, CROP):
                crop = picture[row:row + CROP, col:col + CROP]
                if not is_flat(crop):
                    yield crop


@functools.cache
def crops():
    """Different crops in random order, the same at each run. Those that share no pixel come first, then those
    that overlap, then other channels of the same places."""
    chosen = []
    for channel, shift in itertools.product((GREEN, 0, 2), itertools.product((0, 128, 64, 192), repeat=2)):
        grid = list(grid_of_crops(channel, *shift))
        random.Random(20100514).shuffle(grid)
        chosen += grid
    return chosen


def mosaic(side):
    per_row = side // CROP
    chosen = crops()[:per_row * per_row]
    assert len(chosen) == per_row * per_row, f"only {len(chosen)} different crops for a side of {side}"
    return np.block([chosen[i * per_row:(i + 1) * per_row] for i in range(per_row)])


def stretched(grey, least, greatest):
    """Smoothed, so that grey levels are many, and scaled to the whole range from `least` to `greatest`."""
    smooth = gaussian_filter(grey.astype(np.float32), 1.0)
    smooth -= smooth.min()
    return np.rint(least + smooth * ((greatest - least) / float(smooth.max())))


def ramp(side):
    """Every pixel its own value: the tree is one branch with as many nodes as pixels."""
    return np.arange(side * side).reshape(side, side)


def spiral(side):
    """A bright path one pixel wide that winds inward, its turns one pixel apart: one long, thin component."""
    ring = np.zeros((side, side))
    row, col, (down, right), length = 0, 0, (0, 1), side - 1
    legs = [length] + [step for step in range(length, 1, -2) for _ in range(2)]
    for leg in legs:
        row_end, col_end = row + down * leg, col + right * leg
        ring[min(row, row_end):max(row, row_end) + 1, min(col, col_end):max(col, col_end) + 1] = 255
        row, col, (down, right) = row_end, col_end, (right, -down)
    return ring


def hard_pictures(side):
    noise = np.random.default_rng(20100514)
    yield "constant", "uint8", lambda: np.full((side, side), 7)
    yield "ramp", "uint8", lambda: ramp(side) * 256 // (side * side)
    yield "ramp", "int32", lambda: ramp(side)
    yield "noise", "uint8", lambda: noise.integers(0, 256, (side, side))
    yield "noise", "int32", lambda: noise.integers(-2**31, 2**31, (side, side))
    yield "checkerboard", "uint8", lambda: np.indices((side, side)).sum(0) % 2 * 255
    yield "spiral", "uint8", lambda: spiral(side)


def write(folder, name, kind, side, make):
    path = folder / f"{name}-{side}-{kind}"
    if path.exists() and path.stat().st_mtime > pathlib.Path(__file__).stat().st_mtime:
        return
    unfinished = path.with_suffix(".unfinished")
    with unfinished.open("wb") as out:
        out.write(f"{kind} {side} {side}\n".encode())
        out.write(make().astype(kind).tobytes("F"))
    os.replace(unfinished, path)


def main(folder, hard_side, *sides):
    folder = pathlib.Path(folder)
    folder.mkdir(parents=True, exist_ok=True)
    for side in map(int, sides):
        write(folder, "mosaic", "uint8", side, lambda: mosaic(side))
        write(folder, "mosaic", "uint16", side, lambda: stretched(mosaic(side), 0, 2**16 - 1))
        write(folder, "mosaic", "int32", side, lambda: stretched(mosaic(side), -2**23, 2**23 - 1))
    for name, kind, make in hard_pictures(int(hard_side)):
        write(folder, name, kind, int(hard_side), make)


if __name__ == "__main__":
    main(*sys.argv[1:])
