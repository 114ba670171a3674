# SPDX-License-Identifier: MIT
"""Attribute profiles of integer images and scenes.

>>> import numpy as np
>>> import attribute_profile as ap
>>> image = np.random.default_rng(1).integers(0, 255, (64, 64), dtype=np.uint8)
>>> planes = ap.profile(image, 'area', [10, 100])
>>> planes.shape
(5, 64, 64)
"""
from ._attribute_profile import __version__
from ._differential import differential_profile
from ._features import local_means
from ._plots import plot_curve, plot_profile
from ._profile import extended_profile, profile
from ._scene import profile_scene
from ._thresholds import choose_thresholds, granulometric_curve

__all__ = [
    "__version__",
    "choose_thresholds",
    "differential_profile",
    "extended_profile",
    "granulometric_curve",
    "local_means",
    "plot_curve",
    "plot_profile",
    "profile",
    "profile_scene",
]
