# SPDX-License-Identifier: MIT
from __future__ import annotations

from typing import Any, Optional

import numpy as np
import numpy.typing as npt

from . import _arguments, _xarray


def plot_profile(planes: Any, thresholds: Optional[npt.ArrayLike] = None) -> tuple[Any, Any]:
    """The planes of a profile in one picture: dark regions removed in the first row, the input, bright ones removed.

    Parameters
    ----------
    planes : array_like of integers, shape (2 N + 1, rows, columns)
        As `profile` returns them.
    thresholds : array_like of N numbers, optional
        For the captions. Without them a `DataArray` has its labels, and other planes have numbers.

    Returns
    -------
    figure : matplotlib.figure.Figure
    axes : ndarray of matplotlib.axes.Axes, shape (2 N + 1,)
        In the order of the planes. Planes of uint8 are shown from 0 to 255, others from the least to the greatest value
        of the input.

    Raises
    ------
    TypeError, ValueError
        An argument is not as above.
    ImportError
        There is no matplotlib.

    Examples
    --------
    >>> import numpy as np
    >>> from attribute_profile import plot_profile, profile
    >>> image = np.arange(64, dtype=np.uint8).reshape(8, 8)
    >>> figure, axes = plot_profile(profile(image, 'area', [4, 9]), [4, 9])
    >>> [a.get_title() for a in axes]
    ['dark < 9', 'dark < 4', 'input', 'bright < 4', 'bright < 9']
    """
    values = _arguments.integer_array(_xarray.values_of(planes), "planes", "planes, rows, columns")
    n = len(values) // 2
    if len(values) % 2 == 0 or n == 0:
        raise ValueError(f"planes: a profile has 2 N + 1 planes, not {len(values)}")
    titles = _titles(planes, thresholds, n)
    import matplotlib.pyplot as plt

    low, high = (0, 255) if values.dtype == np.uint8 else (values[n].min(), values[n].max())
    figure, grid = plt.subplots(3, n, squeeze=False, figsize=(3 * n, 9), layout="constrained")
    middle = grid[1, n // 2]
    for unused in grid[1]:
        unused.set_axis_off()
    axes = np.array([*grid[0], middle, *grid[2]])
    for axis, plane, title in zip(axes, values, titles):
        axis.imshow(plane, cmap="gray", vmin=low, vmax=high, interpolation="none")
        axis.set_title(title)
        axis.set_axis_on()
        axis.set(xticks=[], yticks=[])
    return figure, axes


def plot_curve(
    thresholds: npt.ArrayLike,
    removed: npt.ArrayLike,
    chosen: npt.ArrayLike = (),
    *,
    attribute: Optional[str] = None,
) -> tuple[Any, Any]:
    """A granulometric curve, and the thresholds that were chosen from it.

    Parameters
    ----------
    thresholds, removed : array_like of n numbers
        As `granulometric_curve` returns them; thresholds increase, and n is at least 2.
    chosen : array_like of numbers
        As `choose_thresholds` returns them: marked on the curve, with the staircase that they make of it.
    attribute : str, optional
        Names the axis of the thresholds, with its unit.

    Returns
    -------
    figure : matplotlib.figure.Figure
    axes : matplotlib.axes.Axes
        The thresholds run to the right, evenly if they are evenly spaced or the first is not positive, in the logarithm
        otherwise; what is removed goes up by its square root, to which the thresholds are fitted.

    Raises
    ------
    TypeError, ValueError
        An argument is not as above.
    ImportError
        There is no matplotlib.
    """
    x, y = (np.array(_arguments.threshold_list(v)) for v in (thresholds, removed))
    if len(x) < 2 or not (np.diff(x) > 0).all():
        raise ValueError("thresholds: they have to increase, two at least")
    if len(y) != len(x) or not (y >= 0).all():
        raise ValueError("removed: it has to be as many numbers as thresholds, 0 or more")
    label = "threshold" if attribute is None else _axis_label(_arguments.attribute_name(attribute))
    import matplotlib.pyplot as plt

    figure, axes = plt.subplots(layout="constrained")
    axes.plot(x, y, color="black")
    marks = np.asarray(chosen, dtype=float)
    if marks.size:
        level = np.searchsorted(marks, x, "right")  # of each point of the curve
        means = [np.mean(np.sqrt(y[level == k])) ** 2 if k in level else np.nan for k in range(marks.size + 1)]
        axes.stairs(means, [x[0], *marks, x[-1]], baseline=None, color="gray", linewidth=2)
    axes.plot(marks, np.interp(marks, x, y), "s", color="tab:red")
    if x[0] > 0 and not np.allclose(np.diff(x), np.mean(np.diff(x))):
        axes.set_xscale("log")
    axes.set_yscale("function", functions=(lambda v: np.sqrt(np.maximum(v, 0)), np.square))
    axes.set(xlabel=label, ylabel="removed, grey levels")
    return figure, axes


def _titles(planes: Any, thresholds: Any, n: int) -> list[str]:
    if thresholds is not None:
        numbers = _arguments.threshold_list(thresholds)
        if len(numbers) != n:
            raise ValueError(f"thresholds: {len(numbers)} do not make {2 * n + 1} planes; give {n}")
        return _xarray.plane_labels(numbers)
    if _xarray.is_data_array(planes) and "plane" in planes.coords:
        return [str(label) for label in planes.coords["plane"].values]
    return [f"plane {k}" if k != n else "input" for k in range(2 * n + 1)]


def _axis_label(attribute: str) -> str:
    units = {"area": "pixels", "diagonal": "pixels", "std": "grey levels"}
    return f"{attribute}, {units[attribute]}" if attribute in units else attribute
