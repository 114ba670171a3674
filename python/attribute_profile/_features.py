# SPDX-License-Identifier: MIT
from __future__ import annotations

from typing import Any

import numpy as np

from . import _arguments, _xarray


def local_means(planes: Any, size: int = 15) -> Any:
    """Means over the square around each pixel: what a texture is like there.

    A plane of a profile tells which regions a pixel lies in. The mean of the differential planes over its surroundings
    tells how much there is of each size or shape, and classifies textures better than single pixels do.

    Parameters
    ----------
    planes : array_like of numbers, shape (..., rows, columns)
        For example those of `differential_profile`.
    size : int
        Side of the square in pixels, odd. At the edges the square is cut: the mean is over what lies in the image.

    Returns
    -------
    means : ndarray of float32, shape of `planes`

    Raises
    ------
    TypeError, ValueError
        An argument is not as above.

    Examples
    --------
    >>> import numpy as np
    >>> from attribute_profile import local_means
    >>> local_means(np.array([[0, 3, 6, 9]]), 3)
    array([[1.5, 3. , 6. , 7.5]], dtype=float32)
    """
    values = np.asarray(_xarray.values_of(planes))
    if values.dtype.kind not in "iuf":
        raise TypeError(f"planes: they have to be numbers, not {values.dtype}")
    if values.ndim < 2 or values.size == 0:
        raise ValueError(f"planes: shape {values.shape} is not (..., rows, columns), with pixels")
    if _arguments.whole_number(size, "size", 1) % 2 == 0:
        raise ValueError(f"size: it has to be odd, not {size}")
    means = np.empty(values.shape, np.float32)
    for place in np.ndindex(values.shape[:-2]):
        rows = _sums(values[place].astype(float), size, 0)
        means[place] = _sums(rows, size, 1) / _count(values.shape[-2:], size)
    if _xarray.is_data_array(planes):
        return planes.copy(data=means)
    return means


def _window(length: int, size: int) -> tuple[Any, Any]:
    """For each place the first one of its window and the one behind its last, both within the length."""
    places = np.arange(length)
    return np.maximum(places - size // 2, 0), np.minimum(places + size // 2 + 1, length)


def _sums(values: Any, size: int, axis: int) -> Any:
    sums = np.insert(np.cumsum(values, axis), 0, 0, axis)
    first, end = _window(values.shape[axis], size)
    return np.take(sums, end, axis) - np.take(sums, first, axis)


def _count(shape: tuple[int, ...], size: int) -> Any:
    rows, cols = (end - first for first, end in (_window(length, size) for length in shape))
    return rows[:, np.newaxis] * cols
