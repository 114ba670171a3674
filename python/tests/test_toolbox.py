# SPDX-License-Identifier: MIT
"""The same numbers as the functions of the toolbox, which run in GNU Octave on the same pictures."""
import os
import shutil
import subprocess

import numpy as np
import pytest
from support import ATTRIBUTES, coast

import attribute_profile as ap

TOOLBOX = os.environ.get("ATTRIBUTE_PROFILE_TOOLBOX", "")
pytestmark = pytest.mark.skipif(not TOOLBOX or not shutil.which("octave-cli"), reason="no Octave, or no toolbox")
scipy_io = pytest.importorskip("scipy.io")

# Fields of a struct for each picture and attribute.
SCRIPT = """
load ('pictures.mat');
names = fieldnames (pictures);
for p = 1:numel (names)
  I = pictures.(names{p});
  for A = {'area', 'diagonal', 'inertia', 'std'}
    [L, X, Y] = attribute_profile_thresholds (I, A{1}, 3, 8);
    limited = attribute_profile_thresholds (I, A{1}, 4, 4, 'direct', [1 9]);
    AP = attribute_profile (I, A{1}, L);
    found.(names{p}).(A{1}) = struct ('L', L, 'X', X, 'Y', Y, 'limited', limited, 'AP', AP, ...
                                      'DAP', differential_attribute_profile (AP));
  end
end
save ('-v7', 'found.mat', 'found');
"""


def test_numbers_are_those_of_the_toolbox(tmp_path):
    image = coast()
    coarse = image.astype(np.int16)
    pictures = {"coast": image, "signed": 2 * coarse - 255, "wide": coarse[:90, :80].astype(np.uint32) * 3}
    scipy_io.savemat(tmp_path / "pictures.mat", {"pictures": pictures})
    command = ["octave-cli", "--norc", "--no-history", "--no-window-system", "--path", TOOLBOX, "--eval", SCRIPT]
    subprocess.run(command, cwd=tmp_path, check=True, stdout=subprocess.DEVNULL)
    found = scipy_io.loadmat(tmp_path / "found.mat", simplify_cells=True)["found"]
    for name, picture in pictures.items():
        for attribute in ATTRIBUTES:
            theirs = found[name][attribute]
            chosen = ap.choose_thresholds(picture, attribute, 3, connectivity=8)
            thresholds, removed = ap.granulometric_curve(picture, attribute, connectivity=8)
            limited = ap.choose_thresholds(picture, attribute, 4, rule="direct", limits=(1, 9))
            for ours, key in ((chosen, "L"), (thresholds, "X"), (removed, "Y"), (limited, "limited")):
                np.testing.assert_allclose(ours, theirs[key], rtol=1e-12, err_msg=f"{name} {attribute} {key}")
            planes = ap.profile(picture, attribute, theirs["L"])
            np.testing.assert_array_equal(planes.transpose(1, 2, 0), theirs["AP"])
            np.testing.assert_array_equal(ap.differential_profile(planes).transpose(1, 2, 0), theirs["DAP"])


def test_what_leaves_nothing_to_choose_is_an_error():
    image = coast()
    for wrong, text in (
        (dict(image=np.full((9, 9), 7)), "image: .* flat"),
        (dict(limits=(1, 1.4)), "limits: .* nothing to choose"),
        (dict(limits=(0.5, 9)), "limits: .* at least 1"),
        (dict(limits=(9, 1)), "limits: .* increasing"),
        (dict(n=0), "n: .* at least 1"),
        (dict(attribute="perimeter"), "attribute: "),
    ):
        with pytest.raises(ValueError, match=text):
            ap.choose_thresholds(**{"image": image, "attribute": "area", "n": 3, **wrong})
    with pytest.raises(TypeError, match="n: .* whole"):
        ap.choose_thresholds(image, "area", 2.5)
