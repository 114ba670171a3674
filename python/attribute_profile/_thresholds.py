# SPDX-License-Identifier: MIT
from __future__ import annotations

import math
from dataclasses import dataclass
from typing import Any, Callable, Optional

import numpy as np
import numpy.typing as npt

from . import _arguments, _xarray
from . import _attribute_profile as _c

_Floats = npt.NDArray[np.float64]
_POINTS = 60


def granulometric_curve(
    image: Any,
    attribute: str,
    *,
    connectivity: int = 4,
    rule: Optional[str] = None,
    limits: Optional[tuple[float, float]] = None,
) -> tuple[_Floats, _Floats]:
    """How much of an image each threshold removes.

    Parameters
    ----------
    image, attribute, connectivity, rule
        As in `profile`.
    limits : (low, high), optional
        The first and the last threshold, in the unit of the attribute; `low` is at least 1 for area and diagonal, at
        least 0 for the others. Without it the image gives the range, see Notes.

    Returns
    -------
    thresholds : ndarray of float64, shape (n,)
        Up to 60, increasing: evenly spaced for std, evenly in the logarithm for the others (inertia below 1/6: evenly);
        for area whole numbers.
    removed : ndarray of float64, shape (n,)
        The sum of \\|image - plane\\| over all pixels of both planes of a threshold, in grey levels. It never falls.

    Raises
    ------
    TypeError, ValueError
        An argument is not as above; the image is flat; or nothing changes in the range.
    MemoryError, KeyboardInterrupt
        As `profile`.

    Notes
    -----
    The range begins with the last threshold that removes nothing; for std with a sixtieth of its end; for inertia not
    below 1/6, that of a square. It ends with the last threshold by which one of the two planes keeps a tenth of the
    standard deviation of the image; for area with a tenth of the pixels, for diagonal with a third of that of the
    image, if that is less.

    No plane is kept: memory is that of the work, 14 to 85 bytes a pixel. The curve is computed once if `limits` are
    given, and otherwise about three times.

    Examples
    --------
    >>> import numpy as np
    >>> from attribute_profile import granulometric_curve
    >>> image = np.zeros((64, 64), np.uint8)
    >>> image[4:8, 4:8] = image[20:28, 10:18] = 80
    >>> thresholds, removed = granulometric_curve(image, 'area', limits=(1, 100))
    >>> removed[thresholds <= 16].max(), removed[-1] == 80 * (16 + 64)
    (0.0, True)
    """
    return _curve(image, attribute, connectivity, rule, limits)


def choose_thresholds(
    image: Any,
    attribute: str,
    n: int,
    *,
    connectivity: int = 4,
    rule: Optional[str] = None,
    limits: Optional[tuple[float, float]] = None,
) -> _Floats:
    """Thresholds for a profile, chosen where the image changes its behaviour.

    Parameters
    ----------
    image, attribute, connectivity, rule, limits
        As in `granulometric_curve`.
    n : int
        How many thresholds. Regions of k sizes are told apart by k thresholds if a point of the curve lies between each
        two.

    Returns
    -------
    thresholds : ndarray of float64, increasing
        Where the staircase of `n` + 1 levels rises that comes nearest to the square root of the granulometric curve, by
        least squares. Where the curve rises at fewer than `n` of its points, all of these.

    Raises
    ------
    TypeError, ValueError, MemoryError, KeyboardInterrupt
        As `granulometric_curve`.

    Examples
    --------
    >>> import numpy as np
    >>> from attribute_profile import choose_thresholds
    >>> image = np.zeros((128, 128), np.uint8)
    >>> image[4:8, 4:8] = image[20:28, 10:18] = image[60:76, 40:56] = 80
    >>> thresholds = choose_thresholds(image, 'area', 3)  # squares of 16, 64 and 256 pixels
    >>> [sum(thresholds <= size) for size in (16, 64, 256)]
    [0, 1, 2]
    """
    count = _arguments.whole_number(n, "n", 1)
    thresholds, removed = _curve(image, attribute, connectivity, rule, limits)
    chosen: _Floats = thresholds[_rises(np.sqrt(removed), count)]
    return chosen


@dataclass(frozen=True)
class _Axis:
    """Thresholds are spaced evenly in `position`, whose inverse is `threshold`."""

    position: Callable[[Any], Any]
    threshold: Callable[[Any], Any]
    bounds: tuple[float, float]  # the least and the greatest threshold that can be of use
    whole: bool = False

    def spread(self, ends: tuple[float, float]) -> _Floats:
        """The thresholds between two."""
        thresholds = self.threshold(np.linspace(self.position(ends[0]), self.position(ends[1]), _POINTS))
        thresholds[[0, -1]] = ends  # without rounding
        if self.whole:
            thresholds = np.rint(thresholds)
        distinct: _Floats = np.unique(thresholds)
        return distinct


def _axis_of(pixels: npt.NDArray[Any], attribute: str) -> _Axis:
    rows, cols = pixels.shape
    if attribute == "area":
        return _Axis(np.log, np.exp, (1, rows * cols // 10), whole=True)
    if attribute == "diagonal":
        return _Axis(np.log, np.exp, (math.sqrt(2), math.hypot(rows, cols) / 3))
    if attribute == "inertia":
        # A straight line up to the square and the logarithm from there, with one slope where they meet.
        square = 1 / 6
        return _Axis(
            lambda x: np.minimum(x / square, 1) + np.log(np.maximum(x / square, 1)),
            lambda p: square * np.minimum(p, 1) * np.exp(np.maximum(p - 1, 0)),
            # n pixels reach over n rows or columns at most: their mean square distance, over n, is less than this.
            (square, (rows**2 + cols**2) / (2 * max(rows, cols))),
        )
    half = (float(pixels.max()) - float(pixels.min())) / 2  # half of the pixels at either end
    return _Axis(lambda x: x, lambda p: p, (0, half))


class _Curve:
    """The curve of an image: `at(thresholds)` gives what is removed, and whether one of the two planes keeps a tenth of
    the standard deviation of the image."""

    def __init__(self, pixels: npt.NDArray[Any], attribute: str, connectivity: int, rule: Optional[str]) -> None:
        self._pixels = pixels
        self._settings = attribute, connectivity, rule

    def at(self, thresholds: _Floats) -> tuple[_Floats, npt.NDArray[np.bool_]]:
        attribute, connectivity, rule = self._settings
        sums = _c.sums(self._pixels, _arguments.settings(attribute, thresholds, connectivity, rule))
        n = len(thresholds)
        values, squares = sums.T
        removed = (values[n - 1 :: -1] - values[n]) + (values[n] - values[n + 1 :])
        variance = squares / self._pixels.size - (values / self._pixels.size) ** 2
        return removed, np.maximum(variance[n - 1 :: -1], variance[n + 1 :]) >= variance[n] / 100


def _curve(
    image: Any, attribute: str, connectivity: int, rule: Optional[str], limits: Optional[tuple[float, float]]
) -> tuple[_Floats, _Floats]:
    _arguments.settings(attribute, 1, connectivity, rule)
    name = _arguments.attribute_name(attribute)
    pixels = _arguments.image_array(_xarray.values_of(image))
    axis = _axis_of(pixels, name)
    curve = _Curve(pixels, name, connectivity, rule)
    if limits is None:
        if (pixels == pixels[0, 0]).all():
            raise ValueError("image: it is flat, there is nothing to choose")
        ends = _range_of(curve, axis, name)
    else:
        ends = _checked_limits(limits, name)
    thresholds = axis.spread(ends)
    removed = curve.at(thresholds)[0]
    if removed[0] == removed[-1]:
        raise ValueError(
            f"limits: from {ends[0]:.4g} to {ends[1]:.4g} there is nothing to choose for {name!r}; give other limits"
        )
    return thresholds, removed


def _range_of(curve: _Curve, axis: _Axis, attribute: str) -> tuple[float, float]:
    """The curve over all that can be of use shows between which two of its thresholds each end lies; the curve between
    those shows where."""
    coarse = axis.spread(axis.bounds)
    removed, kept = curve.at(coarse)
    fine = np.concatenate([_bracket(axis, coarse, removed == removed[0]), _bracket(axis, coarse, kept)])
    removed_fine, kept_fine = curve.at(fine)
    low, high = (min(max([coarse[0], *fine[flags]]), axis.bounds[1]) for flags in (removed_fine == removed[0], kept_fine))
    return (high / _POINTS, high) if attribute == "std" else (low, high)


def _bracket(axis: _Axis, thresholds: _Floats, flags: npt.NDArray[np.bool_]) -> _Floats:
    """Between the last threshold with a flag and the next one."""
    last = max([0, *np.flatnonzero(flags)])
    return axis.spread((thresholds[last], thresholds[min(last + 1, len(thresholds) - 1)]))


def _checked_limits(limits: Any, attribute: str) -> tuple[float, float]:
    ends = _arguments.threshold_list(limits)
    least = 1 if attribute in ("area", "diagonal") else 0
    if len(ends) != 2 or not (least <= ends[0] < ends[1] < math.inf):
        raise ValueError(f"limits: they have to be (low, high), increasing, with low at least {least} for {attribute}")
    return ends[0], ends[1]


def _rises(y: _Floats, most: int) -> list[int]:
    """The places of the points, at most `most`, at which the staircase nearest to the curve y rises.

    `cost[i, j]` is the squared error of the points i to j about their mean, and `least[j]` that of the best staircase
    over the points up to j. The means run along: they keep an error of 0 exact on a level, whatever the size of y.
    """
    n = len(y)
    cost = np.full((n, n), np.inf)
    centre, squares = y.copy(), np.zeros(n)
    for j in range(n):
        count = np.arange(j + 1, 0, -1)
        difference = y[j] - centre[: j + 1]
        centre[: j + 1] += difference / count
        squares[: j + 1] += difference**2 * ((count - 1) / count)
        cost[: j + 1, j] = squares[: j + 1]
    least = cost[0]
    first: list[npt.NDArray[np.intp]] = []  # of the last level, for each number of rises
    while len(first) < most and least[-1] > 0:
        through = least[:-1, np.newaxis] + cost[1:]
        first.append(np.argmin(through, 0) + 1)
        least = np.min(through, 0)
    places, last = [], n - 1
    for points in reversed(first):
        places.append(int(points[last]))
        last = places[-1] - 1
    return places[::-1]
