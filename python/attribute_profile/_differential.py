# SPDX-License-Identifier: MIT
from __future__ import annotations

from typing import Any

import numpy as np

from . import _arguments, _xarray

_WIDER = {1: np.int16, 2: np.int32, 4: np.int64, 8: np.int64}


def differential_profile(planes: Any) -> Any:
    """Differences of neighbouring planes of a profile: what each step removed.

    Parameters
    ----------
    planes : array_like of integers, shape (..., 2 N + 1, rows, columns)
        One profile, or those of several bands as `extended_profile` returns them.

    Returns
    -------
    differences : ndarray, shape (..., 2 N, rows, columns)
        Plane k minus plane k + 1, in grey levels. With increasing thresholds, by area and diagonal, none is negative.
        The dtype holds each difference: int16 for planes of 8 bits, int32 for 16, int64 for 32 and 64. A `DataArray`
        keeps its coordinates; where it has the labels of the planes, those of two are joined: ``dark < 9 - input``.

    Raises
    ------
    TypeError, ValueError
        `planes` is not as above; or a difference of 64-bit planes does not fit int64.

    Examples
    --------
    >>> import numpy as np
    >>> from attribute_profile import differential_profile, profile
    >>> image = np.array([[2, 2, 9, 9], [2, 8, 1, 9], [7, 7, 1, 3]], dtype=np.uint8)
    >>> differential_profile(profile(image, 'area', [3]))[0]  # by how much dark regions were raised
    array([[0, 0, 0, 0],
           [0, 0, 2, 0],
           [0, 0, 2, 0]], dtype=int16)
    """
    values = np.asarray(_xarray.values_of(planes))
    dimensions = "bands, " * (values.ndim - 3) + "planes, rows, columns"
    values = _arguments.integer_array(values, "planes", dimensions)
    count = values.shape[-3]
    if count < 3 or count % 2 == 0:
        raise ValueError(f"planes: a profile has 2 N + 1 planes, not {count}")
    differences = _differences(values[..., :-1, :, :], values[..., 1:, :, :])
    return _xarray.with_differences(planes, differences, values.ndim - 3)


def _differences(first: Any, second: Any) -> Any:
    wider = _WIDER[first.dtype.itemsize]
    if first.dtype.itemsize < 8:
        return np.subtract(first, second, dtype=wider)
    # Modulo 2^64 the difference is right if it fits; its sign tells whether it does.
    differences = np.subtract(first, second, dtype=first.dtype).astype(wider)
    if not np.array_equal(differences < 0, first < second):
        raise ValueError("planes: a difference does not fit int64; scale the image to fewer grey levels")
    return differences
