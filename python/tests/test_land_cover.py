# SPDX-License-Identifier: MIT
"""The example from a scene with known places to a map, on two textures of one grey."""
import subprocess
import sys

import numpy as np
import pytest
from support import PROJECT

geopandas = pytest.importorskip("geopandas")
rasterio = pytest.importorskip("rasterio")
pytest.importorskip("sklearn")
box = pytest.importorskip("shapely.geometry").box


def test_a_scene_becomes_a_map_with_its_place(tmp_path):
    noise = np.random.default_rng(6).integers(0, 250, (2, 160, 160), dtype=np.uint8)
    coarse = noise[:, :40, :40].repeat(4, 1).repeat(4, 2)
    truth = np.arange(160)[:, np.newaxis] // 80 * np.ones(160, int)  # fine in the north, coarse in the south
    place = {"crs": "EPSG:32632", "transform": rasterio.Affine(10, 0, 5e5, 0, -10, 6e6)}
    with rasterio.open(tmp_path / "scene.tif", "w", driver="GTiff", height=160, width=160, count=2, dtype="uint8",
                       **place) as file:
        file.write(np.where(truth == 1, coarse, noise))
    fields = [box(5e5 + 400 * k, 6e6 - 10 * end, 5e5 + 400 * k + 350, 6e6 - 10 * end + 700)
              for k in range(4) for end in (75, 155)]
    known = geopandas.GeoDataFrame({"cover": ["fine", "coarse"] * 4}, geometry=fields, crs=place["crs"])
    known.to_crs("EPSG:4326").to_file(tmp_path / "known.gpkg", driver="GPKG")

    command = [sys.executable, PROJECT / "examples/land_cover.py", "scene.tif", "known.gpkg", "map.tif", "--column", "cover"]
    lines = subprocess.run(command, cwd=tmp_path, check=True, capture_output=True, text=True).stdout.splitlines()
    assert lines[0] == "classes: 1 coarse 2 fine"
    grey, profiles, means = (float(line.rsplit(" ", 1)[1]) for line in lines[-3:])
    assert grey < 0.7 < profiles < means > 0.97
    with rasterio.open(tmp_path / "map.tif") as file:
        assert (file.crs, file.transform, file.nodata) == (place["crs"], place["transform"], 0)
        assert file.tags(1)["class_2"] == "fine"
        assert np.mean(file.read(1) == 2 - truth) > 0.95
