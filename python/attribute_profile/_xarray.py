# SPDX-License-Identifier: MIT
"""DataArray in, DataArray out. Nothing here imports xarray: who passes a DataArray has done so."""
from __future__ import annotations

import sys
from typing import Any

import numpy as np


def is_data_array(image: object) -> bool:
    """Whether `image` is an `xarray.DataArray`."""
    xarray = sys.modules.get("xarray")
    return xarray is not None and isinstance(image, xarray.DataArray)


def values_of(image: Any) -> Any:
    """What is in a DataArray; anything else as it is."""
    return image.data if is_data_array(image) else image


def plane_labels(thresholds: Any) -> list[str]:
    """The captions of the planes of a profile, in their order."""
    texts = [f"{threshold:.10g}" for threshold in np.atleast_1d(np.asarray(thresholds, dtype=float))]
    return [f"dark < {text}" for text in reversed(texts)] + ["input"] + [f"bright < {text}" for text in texts]


def with_planes(image: Any, planes: Any, place: int, thresholds: Any) -> Any:
    """The profile `planes` of `image`, as a DataArray if that is one, with the dimension of the planes at `place`."""
    if not is_data_array(image):
        return planes
    dims = list(image.dims)
    dims.insert(place, "plane")
    return _data_array(image, planes, dims, "plane", plane_labels(thresholds))


def with_differences(planes: Any, differences: Any, place: int) -> Any:
    """The differences of `planes` along the dimension at `place`, as a DataArray if they are one."""
    if not is_data_array(planes):
        return differences
    name = planes.dims[place]
    labels = planes.coords[name].values if name in planes.coords else []
    joined = [f"{first} - {second}" for first, second in zip(labels[:-1], labels[1:])]
    return _data_array(planes, differences, planes.dims, name, joined)


def _data_array(model: Any, values: Any, dims: Any, plane: Any, labels: list[str]) -> Any:
    import xarray

    coords = {name: c for name, c in model.coords.items() if name != plane and plane not in c.dims}
    if labels:
        coords[plane] = labels
    return xarray.DataArray(values, coords=coords, dims=dims, name=model.name, attrs=model.attrs)
