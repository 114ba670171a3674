#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""The work of a whole call by area in scikit-image: one tree for each direction, reused for all thresholds.

    peer.py PICTURE PLANES THRESHOLD...

Prints JSON with the milliseconds of processor time, and whether the planes are those of the file PLANES,
which a call on PICTURE with these thresholds wrote.
"""
import json
import sys
import time

import numpy as np
from skimage.morphology import area_closing, area_opening, max_tree
from skimage.util import invert


def read_picture(path):
    with open(path, "rb") as file:
        kind, rows, cols = file.readline().split()
        pixels = np.frombuffer(file.read(), kind.decode()).reshape((int(rows), int(cols)), order="F")
    return np.ascontiguousarray(pixels)


def profile(image, thresholds):
    """The planes of an area profile; connectivity 1 is that of 4 neighbours."""
    parent, order = max_tree(invert(image), connectivity=1)
    closed = [area_closing(image, t, 1, parent=parent, tree_traverser=order) for t in reversed(thresholds)]
    parent, order = max_tree(image, connectivity=1)
    opened = [area_opening(image, t, 1, parent=parent, tree_traverser=order) for t in thresholds]
    return [*closed, image, *opened]


def main(picture, planes, *thresholds):
    image = read_picture(picture)
    start = time.process_time()
    result = profile(image, [int(t) for t in thresholds])
    ms = 1000 * (time.process_time() - start)
    ours = np.fromfile(planes, image.dtype).reshape((-1, image.shape[1], image.shape[0]))
    same = len(ours) == len(result) and all(np.array_equal(p, q.T) for p, q in zip(result, ours))
    print(json.dumps({"ms": ms, "same_planes": bool(same)}))


if __name__ == "__main__":
    main(*sys.argv[1:])
