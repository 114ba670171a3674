# SPDX-License-Identifier: MIT
"""Scenes by Dask against one computation on the whole; DataArrays."""
import os
import pickle
import signal
import time

import dask
import dask.array as da
import numpy as np
import pytest
from hypothesis import given, settings
from hypothesis import strategies as st
from support import SANITIZED, coast

import attribute_profile as ap

rasterio = pytest.importorskip("rasterio")
rioxarray = pytest.importorskip("rioxarray")
xarray = pytest.importorskip("xarray")
zarr = pytest.importorskip("zarr")
distributed = pytest.importorskip("distributed")


def corridors(rows, cols, step):
    """One bright region that winds through the whole scene, with small steps of height."""
    scene = np.full((rows, cols), 10, np.int16)
    scene[::step] = 100 + np.arange(cols) % 3
    for row in range(0, rows - step, step):
        scene[row:row + step, -1 if row // step % 2 == 0 else 0] = 100
    return scene


@st.composite
def scenes(draw):
    rows, cols = draw(st.integers(1, 60)), draw(st.integers(1, 60))
    if draw(st.booleans()):
        return corridors(rows, cols, draw(st.integers(2, 4)))
    top, left = draw(st.integers(0, 190 - rows)), draw(st.integers(0, 170 - cols))
    return coast()[top:top + rows, left:left + cols].astype(draw(st.sampled_from(["u1", "<i4", ">u2"])))


@settings(max_examples=150)
@given(scenes(), st.data())
def test_blocks_are_those_of_the_whole_scene(scene, data):
    attribute = data.draw(st.sampled_from(["area", "diagonal"]))
    thresholds = data.draw(st.lists(st.integers(0, 4000 if attribute == "area" else 80), min_size=1, max_size=3))
    chunks = tuple(data.draw(st.integers(5, max(6, n))) for n in scene.shape)
    planes = ap.profile_scene(scene, attribute, thresholds, chunks=chunks, overlap=data.draw(st.integers(0, 9)),
                              connectivity=8, rule=data.draw(st.sampled_from([None, "sub"])))
    assert planes.dtype == scene.dtype and planes.chunks[0] == (2 * len(thresholds) + 1,)
    found = planes.compute(scheduler=data.draw(st.sampled_from(["threads", "synchronous"])))
    assert found.dtype == scene.dtype
    np.testing.assert_array_equal(found, ap.profile(scene, attribute, thresholds, connectivity=8))


@pytest.fixture(scope="module")
def scene():
    return np.tile(coast(), (3, 4))  # 570 x 680


@pytest.fixture(scope="module")
def cluster():
    limit = "4GB" if SANITIZED else "280MB"
    with distributed.LocalCluster(n_workers=2, threads_per_worker=1, processes=True, memory_limit=limit,
                                  dashboard_address=None) as workers, distributed.Client(workers):
        yield workers


def sources(scene, folder):
    """The scene as each kind of source, the parts of a file included."""
    whole = np.memmap(folder / "scene.bin", np.uint8, "w+", 4096 + 5, (scene.shape[0] + 9, scene.shape[1]))
    whole[9:] = scene[::-1]
    whole.flush()
    store = zarr.open(str(folder / "scene.zarr"), "w", shape=scene.shape, chunks=(100, 100), dtype=scene.dtype)
    store[:] = scene
    path = folder / "scene.tif"
    with rasterio.open(path, "w", driver="GTiff", height=scene.shape[0], width=scene.shape[1], count=2, dtype="uint8",
                       crs="EPSG:32632", transform=rasterio.Affine(10, 0, 5e5, 0, -10, 6e6)) as file:
        file.write(~scene, 1)
        file.write(scene, 2)
    return {
        "memmap": (whole[9:][::-1], {}),
        "zarr": (store, {}),
        "path": (path, {"band": 2}),
        "file of xarray": (rioxarray.open_rasterio(path)[1], {}),
        "chunked": (rioxarray.open_rasterio(path, chunks=128)[1], {}),
        "dask": (da.from_array(scene, chunks=97), {}),
    }


def test_sources_in_worker_processes(scene, cluster, tmp_path):
    expected = ap.profile(scene, "area", [20, 3000])
    for kind, (source, options) in sources(scene, tmp_path).items():
        planes = ap.profile_scene(source, "area", [20, 3000], chunks=(200, 300), **options)
        np.testing.assert_array_equal(planes, expected, err_msg=kind)
        if "xarray" in kind or "chunked" in kind:
            assert planes.dims == ("plane", "y", "x") and isinstance(planes.data, da.Array)
            assert planes.rio.crs == "EPSG:32632" and planes.rio.transform() == source.rio.transform()
    graph = ap.profile_scene(sources(scene, tmp_path)["memmap"][0], "area", 20, chunks=200).dask
    assert sum(len(pickle.dumps(task)) for task in graph.values()) < scene.nbytes / 10


def finished_blocks(dask_scheduler):
    return sum(task.state == "memory" for task in dask_scheduler.tasks.values() if "'profile-" in str(task.key))


def test_a_worker_that_is_killed_midway_changes_nothing(scene, cluster):
    big = np.tile(scene, (4, 4))
    client = distributed.default_client()
    workers = set(client.run(os.getpid).values())
    future = client.compute(ap.profile_scene(big, "diagonal", [30, 200], chunks=300))
    while client.run_on_scheduler(finished_blocks) < 5:
        time.sleep(0.02)
    os.kill(min(workers), signal.SIGKILL)
    np.testing.assert_array_equal(future.result(120), ap.profile(big, "diagonal", [30, 200]))
    assert set(client.run(os.getpid).values()) != workers


class Endless:
    """A scene that is never in memory: the coast again and again, mirrored."""

    dtype = np.dtype(np.uint8)

    def __init__(self, rows, cols):
        self.shape = rows, cols

    def __getitem__(self, place):
        picture = coast()
        picture = np.block([[picture, picture[:, ::-1]], [picture[::-1], picture[::-1, ::-1]]])
        rows, cols = (np.arange(s.start, s.stop) % n for s, n in zip(place, picture.shape))
        return picture[np.ix_(rows, cols)]


@pytest.mark.skipif(SANITIZED, reason="the sanitizer takes more memory than any limit")
def test_a_store_larger_than_the_memory_of_the_workers(cluster, tmp_path):
    source = Endless(9500, 8500)
    planes = ap.profile_scene(source, "area", [50, 500, 4000], chunks=750, memory="80 MB")
    assert planes.nbytes > 2 * 280e6
    planes.to_zarr(str(tmp_path / "planes.zarr"))
    stored = zarr.open(str(tmp_path / "planes.zarr"), "r")
    part = ap.profile(source[4000:6000, 0:2000], "area", [50, 500, 4000])
    np.testing.assert_array_equal(stored[:, 4500:5500, 0:1500], part[:, 500:1500, 0:1500])


def test_what_can_not_be_proved(scene):
    levels = np.arange(1, 12) / 20
    with pytest.raises(ValueError, match="exact: inertia .* exact=False"):
        ap.profile_scene(scene, "i", 0.2, chunks=100)
    near = ap.profile_scene(scene, "i", levels, chunks=100, exact=False, overlap=3).compute()
    window = ap.profile(scene[97:203, 297:403], "i", levels)
    np.testing.assert_array_equal(near[:, 100:200, 300:400], window[:, 3:103, 3:103])
    whole = ap.profile_scene(scene, "s", [9], chunks=100, exact=False, overlap=700, rule="max")
    np.testing.assert_array_equal(whole, ap.profile(scene, "s", [9], rule="max"))
    with pytest.raises(ValueError, match="memory: blocks of 300 x 300 .* smaller chunks"):
        ap.profile_scene(scene, "a", 9, chunks=300, memory="2 MB")
    with pytest.raises(ValueError, match="memory: .* can't be proved for the threshold 300000 .* more memory"):
        ap.profile_scene(scene, "a", [9, 300000], chunks=100, memory="3 MB").compute()
    with pytest.raises(TypeError, match="source: .* integers"):
        ap.profile_scene(scene / 2, "a", 9, chunks=100)
    with pytest.raises(TypeError, match="source: list has no shape"):
        ap.profile_scene([[1]], "a", 9, chunks=100)
    with pytest.raises(ValueError, match="source: shape"):
        ap.profile_scene(scene[0], "a", 9, chunks=100)


def test_data_arrays_keep_their_place(tmp_path):
    image = xarray.DataArray(
        coast().astype(np.int16)[np.newaxis], dims=("band", "y", "x"), name="red",
        coords={"band": [3], "y": 50.0 - np.arange(190), "x": np.arange(170.0), "row": ("y", np.arange(190))},
        attrs={"units": "1"},
    ).rio.write_crs("EPSG:4326")
    one = ap.profile(image[0], "area", [100, 12.5])
    assert one.dims == ("plane", "y", "x") and one.name == "red" and one.attrs == image.attrs
    assert list(one.plane.values) == ["dark < 12.5", "dark < 100", "input", "bright < 100", "bright < 12.5"]
    for name in image[0].coords:
        assert one[name].equals(image[0][name])
    np.testing.assert_array_equal(one, ap.profile(image[0].values, "area", [100, 12.5]))
    one.rio.to_raster(tmp_path / "planes.tif")
    back = rioxarray.open_rasterio(tmp_path / "planes.tif")
    assert back.rio.crs == "EPSG:4326" and back.rio.transform() == image.rio.transform() and back.shape == one.shape

    bands = ap.extended_profile(image, "area", [100, 12.5])
    assert bands.dims == ("band", "plane", "y", "x") and bands[0].equals(one)
    steps = ap.differential_profile(bands)
    assert steps.dims == bands.dims and list(steps.plane.values)[1] == "dark < 100 - input"
    assert ap.local_means(steps).dims == bands.dims and steps.rio.crs == "EPSG:4326"
    lazy = ap.profile_scene(image[0], "area", [100, 12.5], chunks=64)
    assert isinstance(lazy.data, da.Array) and lazy.compute().identical(one)
