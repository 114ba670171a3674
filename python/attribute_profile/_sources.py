# SPDX-License-Identifier: MIT
"""What a task reads a scene from. Each class has `shape`, `dtype` and `opened()`, and travels to workers."""
from __future__ import annotations

import mmap
import os
from contextlib import contextmanager
from typing import Any, Callable, Iterator

import numpy as np

from . import _xarray

Reader = Callable[[int, int, int, int], Any]  # (row, column, rows, columns)


def source_of(source: Any, band: int) -> Any:
    """The one of these classes that suits."""
    if isinstance(source, (str, os.PathLike)):
        return RasterSource(os.fspath(source), band)
    if _xarray.is_data_array(source):
        source = source.variable  # it reads a file by windows; `data` would read it all
    elif isinstance(source, np.memmap) and isinstance(source._mmap, mmap.mmap) and source.filename is not None:  # type: ignore[attr-defined]
        return MemmapSource(source)
    return ArraySource(source)


class ArraySource:
    """Anything that can be sliced."""

    def __init__(self, array: Any) -> None:
        for name in ("shape", "dtype", "__getitem__"):
            if not hasattr(array, name):
                raise TypeError(f"source: {type(array).__name__} has no {name}; give a path, an array or a DataArray")
        self.shape = tuple(map(int, array.shape))
        self.dtype = np.dtype(array.dtype)
        self._array = array

    @contextmanager
    def opened(self) -> Iterator[Reader]:
        """A reader of places."""

        def read(row: int, col: int, rows: int, cols: int) -> Any:
            part = self._array[row : row + rows, col : col + cols]
            lazy = getattr(part, "data", part)  # of a Variable
            if hasattr(lazy, "dask"):  # in this task: a task that waits for others could wait for ever
                lazy = lazy.compute(scheduler="synchronous")
                part = lazy
            return np.asarray(part)

        yield read


class MemmapSource:
    """An array in a file, by the file's name: pickled, a memmap would be all its values."""

    def __init__(self, array: Any) -> None:
        self.shape, self.dtype = array.shape, array.dtype
        self._file, self._strides = os.path.abspath(array.filename), array.strides
        # The offset that a memmap tells is that of the array that it is a part of.
        mapped = np.frombuffer(array._mmap, np.uint8).__array_interface__["data"][0]
        start = array.offset - array.offset % mmap.ALLOCATIONGRANULARITY
        self._offset = start + array.__array_interface__["data"][0] - mapped

    @contextmanager
    def opened(self) -> Iterator[Reader]:
        """A reader of places."""
        buffer = np.memmap(self._file, np.uint8, "r")
        array: Any = np.ndarray(self.shape, self.dtype, buffer, self._offset, self._strides)
        yield lambda row, col, rows, cols: array[row : row + rows, col : col + cols]


class RasterSource:
    """A band of a file that rasterio opens."""

    def __init__(self, path: str, band: int) -> None:
        import rasterio

        self._path = os.path.abspath(path) if os.path.exists(path) else path
        self._band = band
        with rasterio.open(self._path) as file:
            if not 1 <= band <= file.count:
                raise ValueError(f"band: {path} has the bands 1 to {file.count}, not {band}")
            self.shape, self.dtype = file.shape, np.dtype(file.dtypes[band - 1])

    @contextmanager
    def opened(self) -> Iterator[Reader]:
        """A reader of places."""
        import rasterio
        from rasterio.windows import Window

        with rasterio.open(self._path) as file:
            yield lambda row, col, rows, cols: file.read(self._band, window=Window(col, row, cols, rows))
