# SPDX-License-Identifier: MIT
"""The code of the pages for users runs, from the top to the bottom, and shows what they say."""
import re

import numpy as np
import pytest
from support import PROJECT

pytest.importorskip("zarr")
pytest.importorskip("rioxarray")


@pytest.mark.parametrize("page, last", [("README.md", (4, 300, 400)), ("python/README.md", (5, 512, 512)),
                                        ("docs/python.md", (5, 200, 200))])
def test_pages(page, last, monkeypatch):
    monkeypatch.chdir(PROJECT)
    monkeypatch.setenv("MPLBACKEND", "agg")
    names = {}
    for code in re.findall(r"^```python\n(.*?)^```", (PROJECT / page).read_text(), re.MULTILINE | re.DOTALL):
        exec(compile(code, page, "exec"), names)
    value = next(names[name] for name in ("part", "features", "planes") if name in names)
    assert np.shape(value) == last
