# SPDX-License-Identifier: MIT
"""Pictures and strategies that the tests share."""
import os
import pathlib

import numpy as np
from hypothesis import settings
from hypothesis import strategies as st
from hypothesis.extra import numpy as hnp

# A busy machine may take its time. A failing example is printed with the line that repeats it.
settings.register_profile("project", deadline=None, database=None, print_blob=True)
settings.load_profile("project")

SANITIZED = "libasan" in os.environ.get("LD_PRELOAD", "")  # takes far more memory and time
PROJECT = pathlib.Path(__file__).resolve().parents[2]
DTYPES = [np.dtype(code) for code in ("i1", "u1", "i2", "u2", "i4", "u4", "i8", "u8")]
ATTRIBUTES = ["area", "diagonal", "inertia", "std"]
RULES = ["min", "max", "direct", "sub"]


def coast():
    """The first band of the picture of the user guide, uint8."""
    head, pixels = (PROJECT / "tests/entry/coast.pgm").read_bytes().split(b"\n255\n", 1)
    cols, rows = map(int, head.split()[1:])
    return np.frombuffer(pixels, np.uint8).reshape(rows, cols)


def images(dtypes=DTYPES, side=12):
    """Small images with ties, extremes and neighbours of zero."""

    def of(dtype):
        ends = np.iinfo(dtype)
        values = st.one_of(st.integers(0, 4), st.sampled_from([ends.min, ends.min + 1, ends.max]))
        return hnp.arrays(dtype, hnp.array_shapes(min_dims=2, max_dims=2, max_side=side), elements=values)

    return st.sampled_from(dtypes).flatmap(of)
