# SPDX-License-Identifier: MIT
# The compiled module. It trusts its arguments.
from typing import Any, Callable

import numpy as np
import numpy.typing as npt

__version__: str
attributes: list[tuple[str, str, str, bool]]  # letter, name, default rule, whether blocks can be proved
rules: list[str]
longest_side: int

class Settings:
    def __init__(self, attribute: str, thresholds: list[float], connectivity: int, rule: str) -> None: ...

def profiles(
    bands: npt.NDArray[Any], wanted: Settings, workers: int, after: Callable[[int], object]
) -> npt.NDArray[Any]: ...
def sums(image: npt.NDArray[Any], wanted: Settings) -> npt.NDArray[np.float64]: ...
def block(
    read: Callable[[int, int, int, int], npt.NDArray[Any]],
    dtype: np.dtype[Any],
    scene: tuple[int, int, int, int],
    place: tuple[int, int, int, int],
    wanted: Settings,
    overlap: int,
    most_pixels: int,
) -> npt.NDArray[Any]: ...
def window_needs(dtype: np.dtype[Any], wanted: Settings) -> tuple[int, float]: ...
