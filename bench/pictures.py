#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""Makes the pictures of the benchmark from what Debian's python3-skimage and xplanet-images ship.

    pictures.py FOLDER HARD_SIDE SIDE...

Writes mosaic-SIDE-CLASS for each SIDE (a multiple of 256), the hard pictures of HARD_SIDE, and those of one row
or column into FOLDER. A file holds one line, "CLASS ROWS COLUMNS", and the pixels column by column, the order of
a host's array. Files that are newer than this script are kept.

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
LONGEST = 32765  # rows or columns of an image
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


def serpentine(side):
    """Where a path one pixel wide runs that covers every other row, turning at the ends."""
    path = np.arange(side)[:, None] % 2 == np.zeros(side)
    path[1::4, -1] = path[3::4, 0] = True
    return path


def rising_serpentine(side):
    """The path's values rise from its start to its end: one branch that winds through the picture."""
    steps = np.arange(side * side).reshape(side, side)
    steps[2::4] = steps[2::4, ::-1]
    return steps * serpentine(side)


def comb(side):
    """Teeth one pixel wide, each of its own value, that meet in the last row."""
    teeth = np.arange(side)[None, :] * np.ones((side, 1))
    teeth[:-1, 1::2] = 0
    return teeth


def hard_pictures(side):
    noise = np.random.default_rng(20100514)
    yield "constant", "uint8", lambda: np.full((side, side), 7)
    yield "ramp", "uint8", lambda: ramp(side) * 256 // (side * side)
    yield "ramp", "int32", lambda: ramp(side)
    yield "noise", "uint8", lambda: noise.integers(0, 256, (side, side))
    yield "noise", "int32", lambda: noise.integers(-2**31, 2**31, (side, side))
    yield "checkerboard", "uint8", lambda: np.indices((side, side)).sum(0) % 2 * 255
    yield "spiral", "uint8", lambda: spiral(side)
    yield "serpentine", "uint8", lambda: serpentine(side) * 255
    yield "serpentine", "int32", lambda: rising_serpentine(side)
    yield "comb", "uint16", lambda: comb(side)
    yield "lying-comb", "uint16", lambda: comb(side).T
    yield "distinct", "int32", lambda: noise.permutation(side * side).reshape(side, side)
    yield "two-values", "uint8", lambda: noise.integers(7, 9, (side, side))
    yield "salt-and-pepper", "uint8", lambda: np.where(noise.random((side, side)) < 0.1,
                                                       noise.integers(0, 2, (side, side)) * 255, mosaic(side))
    for kind in ("uint8", "uint16", "int32"):
        range_ = np.iinfo(kind)
        yield "extremes", kind, lambda: noise.choice([range_.min, range_.max], (side, side))


def line_of_photographs():
    return stretched(mosaic(2048)[::128].reshape(1, -1)[:, :LONGEST], -2**23, 2**23 - 1)


def lines():
    """One row as long as can be, of rising values and of photographs, and one such column."""
    for name, make in ("ramp", lambda: np.arange(LONGEST)[None]), ("mosaic", line_of_photographs):
        yield f"{name}-1x{LONGEST}", "int32", make
        yield f"{name}-{LONGEST}x1", "int32", lambda: make().T


def write(path, kind, make):
    if path.exists() and path.stat().st_mtime > pathlib.Path(__file__).stat().st_mtime:
        return
    unfinished = path.with_suffix(".unfinished")
    pixels = make().astype(kind)
    with unfinished.open("wb") as out:
        out.write("{} {} {}\n".format(kind, *pixels.shape).encode())
        out.write(pixels.tobytes("F"))
    os.replace(unfinished, path)


def main(folder, hard_side, *sides):
    folder = pathlib.Path(folder)
    folder.mkdir(parents=True, exist_ok=True)
    for side in map(int, sides):
        write(folder / f"mosaic-{side}-uint8", "uint8", lambda: mosaic(side))
        write(folder / f"mosaic-{side}-uint16", "uint16", lambda: stretched(mosaic(side), 0, 2**16 - 1))
        write(folder / f"mosaic-{side}-int32", "int32", lambda: stretched(mosaic(side), -2**23, 2**23 - 1))
    for name, kind, make in hard_pictures(int(hard_side)):
        write(folder / f"{name}-{hard_side}-{kind}", kind, make)
    for name, kind, make in lines():
        write(folder / f"{name}-{kind}", kind, make)


if __name__ == "__main__":
    main(*sys.argv[1:])
