# SPDX-License-Identifier: MIT
"""Checks of what users pass: each error names the argument and the mend."""
from __future__ import annotations

import operator
from typing import Any

import numpy as np
import numpy.typing as npt

from . import _attribute_profile as _c

_NAMES = {name: long for short, long, _, _ in _c.attributes for name in (short, long)}
_PROVABLE = {long for _, long, _, provable in _c.attributes if provable}


def attribute_name(attribute: object) -> str:
    """The long name of an attribute."""
    if not isinstance(attribute, str):
        raise TypeError(f"attribute: it has to be a string, not {type(attribute).__name__}; give one of {_all_names()}")
    if attribute not in _NAMES:
        raise ValueError(f"attribute: there is no {attribute!r}; give one of {_all_names()}")
    return _NAMES[attribute]


def is_provable(attribute: str) -> bool:
    """Whether a block of a scene can be sure of its regions by the attribute of this long name."""
    return attribute in _PROVABLE


def settings(attribute: object, thresholds: object, connectivity: object, rule: object) -> _c.Settings:
    """The settings of a profile."""
    if not isinstance(connectivity, (int, float, np.number)):
        raise TypeError(f"connectivity: it has to be 4 or 8, not {type(connectivity).__name__}")
    if connectivity not in (4, 8):
        raise ValueError(f"connectivity: it has to be 4 or 8, not {connectivity!r}")
    if rule is not None and not isinstance(rule, str):
        raise TypeError(f"rule: it has to be a string or None, not {type(rule).__name__}")
    if rule is not None and rule not in _c.rules:
        raise ValueError(f"rule: there is no {rule!r}; give one of {', '.join(map(repr, _c.rules))}, or None")
    name = attribute_name(attribute)
    return _c.Settings(name, threshold_list(thresholds), 8 if connectivity == 8 else 4, rule or "")


def threshold_list(thresholds: object) -> list[float]:
    """The thresholds as numbers, one at least."""
    try:
        values = np.atleast_1d(np.asarray(thresholds))
    except ValueError:  # a ragged sequence
        raise ValueError("thresholds: they have to be one number or a flat sequence of them") from None
    if values.ndim != 1:
        raise ValueError(f"thresholds: they have to be one number or a sequence of them, not of shape {values.shape}")
    if values.size == 0:
        raise ValueError("thresholds: give at least one")
    if values.dtype.kind not in "iuf":
        raise TypeError(f"thresholds: they have to be numbers, not {values.dtype}")
    return [float(value) for value in values]


def integer_array(image: object, argument: str, dimensions: str) -> npt.NDArray[Any]:
    """`image` as an array of integers with dimensions as named, none of them empty; read where it is."""
    if isinstance(image, np.ma.MaskedArray):
        raise TypeError(f"{argument}: a masked array has holes; fill them, as by {argument}.filled(0)")
    array = np.asarray(image)
    if array.dtype.kind not in "iu":
        mend = "uint8" if array.dtype.kind == "b" else "int16"
        raise TypeError(
            f"{argument}: dtype {array.dtype} is not of integers; convert it, as by {argument}.astype('{mend}')"
            + (" after scaling" if array.dtype.kind == "f" else "")
        )
    if array.ndim != len(dimensions.split(", ")):
        raise ValueError(f"{argument}: shape {array.shape} is not ({dimensions})")
    if array.size == 0:
        raise ValueError(f"{argument}: shape {array.shape} has no pixels")
    return array


def image_array(image: object, argument: str = "image", dimensions: str = "rows, columns") -> npt.NDArray[Any]:
    """The same, of a size that the library can hold."""
    array = integer_array(image, argument, dimensions)
    if max(array.shape[-2:]) > _c.longest_side:
        raise ValueError(
            f"{argument}: {array.shape[-2]} rows and {array.shape[-1]} columns are too many; an image has at most "
            f"{_c.longest_side} of either. profile_scene takes any size"
        )
    return array


def whole_number(value: Any, argument: str, least: int) -> int:
    """`value` as an integer of at least `least`."""
    try:
        number = operator.index(value)
    except TypeError:
        raise TypeError(f"{argument}: it has to be a whole number, not {type(value).__name__}") from None
    if number < least:
        raise ValueError(f"{argument}: it has to be at least {least}, not {number}")
    return number


def _all_names() -> str:
    return ", ".join(f"{long!r} ({short!r})" for short, long, _, _ in _c.attributes)
