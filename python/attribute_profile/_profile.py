# SPDX-License-Identifier: MIT
from __future__ import annotations

import os
from typing import Any, Optional

import numpy as np
import numpy.typing as npt

from . import _arguments, _xarray
from . import _attribute_profile as _c
from ._progress import counter


def profile(
    image: Any, attribute: str, thresholds: npt.ArrayLike, *, connectivity: int = 4, rule: Optional[str] = None
) -> Any:
    """Attribute profile of a two-dimensional integer image.

    Dark regions whose attribute lies below a threshold are raised to their surroundings, bright ones are lowered. A
    region that stays keeps its outline to the pixel.

    Parameters
    ----------
    image : array_like of integers, shape (rows, columns)
        Any integer dtype, byte order and strides; at most 32765 rows and columns. It is copied once, for the work, and
        not changed. An `xarray.DataArray` with two dimensions gives a `DataArray`.
    attribute : str
        ``'area'`` (pixels), ``'diagonal'`` of the bounding box (pixels), ``'inertia'`` (no unit) or ``'std'`` (grey
        levels); or the first letter.
    thresholds : array_like of N numbers
        In the unit of the attribute, used in the order given. A region whose attribute equals one stays. Those of area
        are cut to whole numbers.
    connectivity : {4, 8}
        Whether pixels belong together if they share an edge, or a corner too.
    rule : {'min', 'max', 'direct', 'sub'}, optional
        What becomes of a region that fails inside one that passes, or the other way round. By default ``'min'`` for
        area and diagonal, where all rules agree, and ``'sub'`` for inertia and std.

    Returns
    -------
    planes : ndarray, shape (2 N + 1, rows, columns), dtype of `image`
        Planes 0 to N - 1 have dark regions removed, by the last threshold first; plane N is the image; planes N + 1 to
        2 N have bright regions removed, by the first threshold first. A `DataArray` keeps its coordinates and
        attributes and has the new dimension ``plane`` in front, with labels such as ``dark < 100``.

    Raises
    ------
    TypeError, ValueError
        An argument is not as above; the text names it.
    MemoryError
        There is no room for the planes, or for the work: 14 to 85 bytes a pixel.
    KeyboardInterrupt
        Ctrl-C ends the call at once. Its work goes on in a thread of its own, which stops where the library next looks
        up, at worst when it has made one of the two trees; its memory is free then. Python waits for it before it ends.

    Notes
    -----
    The interpreter's lock is released: calls in several threads run side by side.

    Examples
    --------
    >>> import numpy as np
    >>> from attribute_profile import profile
    >>> image = np.array([[2, 2, 9, 9], [2, 8, 1, 9], [7, 7, 1, 3]], dtype=np.uint8)
    >>> planes = profile(image, 'area', [3])
    >>> planes.shape
    (3, 3, 4)
    >>> planes[0]  # dark regions of less than 3 pixels are filled
    array([[2, 2, 9, 9],
           [2, 8, 3, 9],
           [7, 7, 3, 3]], dtype=uint8)
    >>> planes[2]  # bright ones are cut down
    array([[2, 2, 9, 9],
           [2, 7, 1, 9],
           [7, 7, 1, 3]], dtype=uint8)
    """
    wanted = _arguments.settings(attribute, thresholds, connectivity, rule)
    pixels = _arguments.image_array(_xarray.values_of(image), "image")
    planes = _profiles(pixels[np.newaxis], wanted, 1)[0]
    return _xarray.with_planes(image, planes, 0, thresholds)


def extended_profile(
    bands: Any,
    attribute: str,
    thresholds: npt.ArrayLike,
    *,
    connectivity: int = 4,
    rule: Optional[str] = None,
    workers: Optional[int] = None,
    progress: bool = False,
) -> Any:
    """Attribute profiles of all bands of an image, side by side in threads.

    Parameters
    ----------
    bands : array_like of integers, shape (bands, rows, columns)
        As `image` in `profile`.
    attribute, thresholds, connectivity, rule
        As in `profile`, the same for all bands.
    workers : int, optional
        How many bands are computed at a time; by default as many as there are cores for this process. Each needs 14 to
        85 bytes a pixel.
    progress : bool
        Whether to show a bar with the bands that are finished; needs tqdm.

    Returns
    -------
    planes : ndarray, shape (bands, 2 N + 1, rows, columns), dtype of `bands`
        ``planes[b]`` is ``profile(bands[b], ...)``, however many workers there are. For a classifier
        ``planes.reshape(-1, rows, columns)`` has all planes in one row. A `DataArray` gets the new dimension ``plane``
        behind that of the bands.

    Raises
    ------
    TypeError, ValueError, MemoryError, KeyboardInterrupt
        As `profile`.
    ImportError
        There is no tqdm, and `progress` is asked for.

    Examples
    --------
    >>> import numpy as np
    >>> from attribute_profile import extended_profile
    >>> bands = np.arange(48, dtype=np.int16).reshape(3, 4, 4)
    >>> extended_profile(bands, 'area', [3, 10]).shape
    (3, 5, 4, 4)
    """
    wanted = _arguments.settings(attribute, thresholds, connectivity, rule)
    pixels = _arguments.image_array(_xarray.values_of(bands), "bands", "bands, rows, columns")
    count = _cores() if workers is None else _arguments.whole_number(workers, "workers", 1)
    with counter(len(pixels), progress) as after:
        planes = _profiles(pixels, wanted, count, after)
    return _xarray.with_planes(bands, planes, 1, thresholds)


def _cores() -> int:
    return len(os.sched_getaffinity(0)) if hasattr(os, "sched_getaffinity") else os.cpu_count() or 1


def _profiles(pixels: npt.NDArray[Any], wanted: _c.Settings, workers: int, after: Any = lambda count: None) -> Any:
    planes = _c.profiles(pixels, wanted, workers, after)
    return planes if pixels.dtype.isnative else planes.byteswap(inplace=True).view(pixels.dtype)
