# SPDX-License-Identifier: MIT
from __future__ import annotations

from typing import Any, Optional, Union

import numpy.typing as npt


def profile_scene(
    source: Any,
    attribute: str,
    thresholds: npt.ArrayLike,
    *,
    chunks: Any,
    connectivity: int = 4,
    rule: Optional[str] = None,
    memory: Union[int, str] = "1 GB",
    overlap: Optional[int] = None,
    exact: bool = True,
    band: int = 1,
) -> Any:
    """Attribute profile of a scene of any size, computed by Dask block after block.

    By area and diagonal the result is, to the bit, that of the whole scene, whatever the chunks and the scheduler: each
    block is computed from a window around it, and what the window can't prove is read again with more around it.

    Parameters
    ----------
    source : object
        The scene, rows x columns of integers, that each task opens and slices: a path or URL that rasterio opens, a
        `numpy.memmap`, a Zarr array, an `xarray.DataArray`, or any object with `shape`, `dtype` and
        ``[rows, columns]``. For worker processes it has to be picklable. A memmap is opened anew in each of them; an
        array in memory is sent there once.
    attribute, thresholds, connectivity, rule
        As in `profile`.
    chunks : int, tuple or 'auto'
        Of the rows and columns of the result, as Dask takes them. The planes are one chunk. Blocks of 1000 to 4000
        pixels a side suit, larger ones for larger thresholds.
    memory : int or str
        The most bytes that a task may take for windows and planes, such as ``'2 GB'``. Besides there are the Python
        process, what `source` takes to be read, and the blocks that Dask keeps until they are stored: 2 N + 1 planes
        each. A worker of p threads needs room for p tasks.
    overlap : int, optional
        Pixels around a block to begin with; by default what suits the thresholds.
    exact : bool
        By inertia and std a block can't be sure of its regions. With False they are judged by what lies within
        `overlap` pixels (by default 256) around the block: the result then depends on the chunks.
    band : int
        The band of a path, from 1.

    Returns
    -------
    planes : dask.array.Array, shape (2 N + 1, rows, columns), dtype of `source`
        Lazy: store or compute it. Planes are in the order of `profile`. A `DataArray` gives a `DataArray` with the
        coordinates, as `profile` does.

    Raises
    ------
    TypeError, ValueError
        An argument is not as above; by inertia or std `exact` is True; or `memory` is too little for the blocks. While
        it is computed: `memory` is too little for the window that a block takes.
    ImportError
        There is no Dask, or for a path no rasterio.

    Examples
    --------
    >>> import numpy as np
    >>> from attribute_profile import profile, profile_scene
    >>> scene = np.random.default_rng(2).integers(0, 9, (300, 400), dtype=np.uint8)
    >>> planes = profile_scene(scene, 'area', [10, 1000], chunks=100)
    >>> planes.shape, planes.numblocks
    ((5, 300, 400), (1, 3, 4))
    >>> np.array_equal(planes.compute(), profile(scene, 'area', [10, 1000]))
    True
    """
    from ._dask import lazy_profile

    return lazy_profile(
        source, attribute, thresholds, chunks, connectivity, rule, memory, overlap, exact=exact, band=band
    )
