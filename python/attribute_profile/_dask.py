# SPDX-License-Identifier: MIT
"""Scenes by Dask. Imported where it is needed: nothing else here knows Dask."""
from __future__ import annotations

import math
import uuid
from dataclasses import dataclass
from itertools import accumulate, product
from typing import Any, Optional

import dask.array
import numpy as np
from dask.highlevelgraph import HighLevelGraph
from dask.utils import format_bytes, parse_bytes

from . import _arguments, _xarray
from . import _attribute_profile as _c
from ._profile import profile
from ._sources import source_of

_Place = tuple[int, int, int, int]  # row, column, rows, columns


@dataclass(frozen=True)  # no tuple: Dask would look for tasks in it
class _Task:
    """What the blocks of a scene have in common. Travels to workers."""

    scene: _Place
    attribute: str
    thresholds: list[float]
    connectivity: int
    rule: Optional[str]
    overlap: int
    most_pixels: int

    def settings(self) -> _c.Settings:
        return _arguments.settings(self.attribute, self.thresholds, self.connectivity, self.rule)


def lazy_profile(
    source: Any,
    attribute: str,
    thresholds: Any,
    chunks: Any,
    connectivity: int,
    rule: Optional[str],
    memory: Any,
    overlap: Optional[int],
    *,
    exact: bool,
    band: int,
) -> Any:
    """See `profile_scene`."""
    wanted = _arguments.settings(attribute, thresholds, connectivity, rule)
    name = _arguments.attribute_name(attribute)
    proves = _arguments.is_provable(name)
    if exact and not proves:
        raise ValueError(
            f"exact: {name} can shrink from a region to a greater one, so no block can be sure of its regions; give "
            "exact=False to have them judged by what lies around the block, or use profile on the whole scene"
        )
    scene = source_of(source, _arguments.whole_number(band, "band", 1))
    _check_scene(scene)
    sides = dask.array.core.normalize_chunks(chunks, shape=scene.shape, dtype=scene.dtype)
    numbers = _arguments.threshold_list(thresholds)
    block = _Block(max(sides[0]), max(sides[1]), scene.dtype, wanted, len(numbers))
    most_pixels = block.window_pixels(parse_bytes(memory))
    around = block.overlap(most_pixels, proves) if overlap is None else _arguments.whole_number(overlap, "overlap", 0)
    if not proves:
        block.check_window(around, most_pixels, scene.shape)
    task = _Task((0, 0, scene.shape[0], scene.shape[1]), name, numbers, connectivity, rule, around, most_pixels)
    return _xarray.with_planes(source, _array(scene, task, sides, proves), 0, numbers)


def _check_scene(scene: Any) -> None:
    if scene.dtype.kind not in "iu":
        raise TypeError(f"source: dtype {scene.dtype} is not of integers; convert it, as by astype('int16')")
    if len(scene.shape) != 2 or 0 in scene.shape:
        raise ValueError(f"source: shape {scene.shape} is not (rows, columns), with pixels")


class _Block:
    """The largest block, and what windows around it cost."""

    def __init__(self, rows: int, cols: int, dtype: Any, wanted: _c.Settings, thresholds: int) -> None:
        self._rows, self._cols = rows, cols
        self._pixel, self._reach = _c.window_needs(dtype, wanted)
        # The planes of the result, and those of a tree while they are proved.
        self._planes = rows * cols * (3 * thresholds + 1) * dtype.itemsize

    def window_pixels(self, memory: int) -> int:
        """How many pixels a window may have."""
        least = self._planes + self._rows * self._cols * self._pixel
        if max(self._rows, self._cols) > _c.longest_side:
            raise ValueError(f"chunks: {self._rows} x {self._cols} pixels; at most {_c.longest_side} a side are possible")
        if memory < least:
            raise ValueError(
                f"memory: blocks of {self._rows} x {self._cols} pixels take {format_bytes(least)} without anything "
                f"around them; give more memory than {format_bytes(memory)}, or smaller chunks"
            )
        return int((memory - self._planes) // self._pixel)

    def overlap(self, window_pixels: int, proves: bool) -> int:
        """Enough for nearly all regions; bounded, so that windows are mostly block."""
        if not proves:
            return 256
        return int(max(1.0, min(math.ceil(self._reach), math.sqrt(window_pixels) / 8)))

    def check_window(self, overlap: int, most_pixels: int, scene: tuple[int, int]) -> None:
        """A window that is computed by itself has to fit."""
        rows, cols = (min(side + 2 * overlap, all_) for side, all_ in zip((self._rows, self._cols), scene))
        if rows * cols > most_pixels or max(rows, cols) > _c.longest_side:
            raise ValueError(f"memory: a window of {rows} x {cols} pixels does not fit; give more, or smaller chunks")


def _array(scene: Any, task: _Task, sides: Any, proves: bool) -> Any:
    """The lazy planes: a task for each block, which all refer to the scene by one key."""
    name = f"profile-{uuid.uuid4().hex}"
    starts = [[0, *accumulate(lengths)] for lengths in sides]
    graph: dict[Any, Any] = {f"scene-{name}": scene}
    compute = _proved_block if proves else _judged_block
    for i, j in product(*map(range, map(len, sides))):
        place = (starts[0][i], starts[1][j], sides[0][i], sides[1][j])
        graph[name, 0, i, j] = (compute, f"scene-{name}", task, place)
    layers = HighLevelGraph.from_collections(name, graph, dependencies=[])
    chunks = ((2 * len(task.thresholds) + 1,), *sides)
    return dask.array.core.Array(layers, name, chunks, meta=np.empty((0, 0, 0), scene.dtype))


def _proved_block(scene: Any, task: _Task, place: _Place) -> Any:
    with scene.opened() as read:
        planes = _c.block(read, scene.dtype, task.scene, place, task.settings(), task.overlap, task.most_pixels)
    return planes.astype(scene.dtype, copy=False)


def _judged_block(scene: Any, task: _Task, place: _Place) -> Any:
    row, col, rows, cols = place
    top, left = max(row - task.overlap, 0), max(col - task.overlap, 0)
    end_row, end_col = (min(end + task.overlap, all_) for end, all_ in zip((row + rows, col + cols), task.scene[2:]))
    with scene.opened() as read:
        window = read(top, left, end_row - top, end_col - left)
    planes = profile(window, task.attribute, task.thresholds, connectivity=task.connectivity, rule=task.rule)
    return planes[:, row - top : row - top + rows, col - left : col - left + cols].copy()
