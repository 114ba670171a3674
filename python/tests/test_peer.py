# SPDX-License-Identifier: MIT
"""scikit-image's own tests of its area and diameter filters, run against `profile`."""
import numpy as np
import pytest

import attribute_profile as ap

peer = pytest.importorskip("skimage.morphology.tests.test_max_tree")
full_type_test = peer._full_type_test


def filtered(image, attribute, threshold, connectivity, plane):
    if image.dtype.kind == "f":  # these come from integers, divided
        return filtered(np.rint(image * 255).astype(np.uint8), attribute, threshold, connectivity, plane) / 255
    return ap.profile(image, attribute, threshold, connectivity={1: 4, 2: 8}[connectivity])[plane]


def by_area(plane):
    return lambda image, area, connectivity=1: filtered(image, "area", area, connectivity, plane)


def by_diameter(plane):
    """Their diameter is the longer side of the box: a line of that many pixels stays. A box of 3 x 3 has a longer diagonal
    than a line of 4, but theirs have none."""
    return lambda image, diameter, connectivity=1: filtered(image, "diagonal", np.hypot(diameter, 1), connectivity, plane)


@pytest.mark.parametrize("name, ours", [("area_opening", by_area(2)), ("area_closing", by_area(0)),
                                        ("diameter_opening", by_diameter(2)), ("diameter_closing", by_diameter(0))])
def test_their_tests_pass(name, ours, monkeypatch):
    calls = []

    def without_trees(image, parameter, expected, function, **options):
        if "parent" not in options:  # a tree made before is not ours
            calls.append(function)
            full_type_test(image, parameter, expected, function, **options)

    monkeypatch.setattr(peer, "_full_type_test", without_trees)
    monkeypatch.setattr(peer, name, ours)
    getattr(peer.TestMaxtree(), f"test_{name}")()
    assert calls == [ours, ours]
