# SPDX-License-Identifier: MIT
"""Profiles of arrays: results, layouts, threads, interruption, errors."""
import inspect
import os
import signal
import subprocess
import sys
import threading
import time
from concurrent.futures import ThreadPoolExecutor

import numpy as np
import pytest
from hypothesis import given, settings
from hypothesis import strategies as st
from support import ATTRIBUTES, DTYPES, PROJECT, RULES, SANITIZED, coast, images

import attribute_profile as ap

THRESHOLDS = {"area": [2, 5], "diagonal": [2, 4.5], "inertia": [0.1, 0.2], "std": [0.5, 2]}
CALLS = st.sampled_from(ATTRIBUTES).flatmap(
    lambda name: st.fixed_dictionaries(
        {"attribute": st.just(name), "thresholds": st.just(THRESHOLDS[name]), "connectivity": st.sampled_from([4, 8]),
         "rule": st.sampled_from([None, *RULES])}
    )
)


def digest(planes):
    """The bytes column by column, weighted by their positions: as in tests/entry/digests_test.cpp."""
    stored = planes.transpose(0, 2, 1).astype(planes.dtype.newbyteorder("<")).tobytes()
    position = np.arange(1, len(stored) + 1, dtype=np.uint64)
    weight = position * position % 65519 * position % 65519 + 1
    return str((weight * np.frombuffer(stored, np.uint8)).sum())


def noise(dtype):
    """That of tests/entry/digests_test.cpp."""
    state, drawn = 11, []
    for _ in range(37 * 61 * 9):
        state = 16807 * state % 0x7FFFFFFF
        drawn.append(state >> 23)
    kind, *bits = np.array(drawn, np.uint8).reshape(-1, 9).T
    values = np.stack(bits, axis=1)[:, :dtype.itemsize].copy().view(dtype.newbyteorder("<"))[:, 0].astype(dtype)
    special = np.array([np.iinfo(dtype).min, np.iinfo(dtype).max, 0, 1], dtype)
    return np.where(kind < 84, special[kind % 4], values).reshape(61, 37).T


@pytest.mark.parametrize("dtype", DTYPES, ids=str)
def test_digests_are_those_of_the_module(dtype):
    lines = (PROJECT / "tests/entry/digests.txt").read_text().splitlines()
    table = [line.split() for line in lines if line.startswith(f"{dtype} ")]
    assert len(table) == 64
    step = {1: 1, 2: 97, 4: 1009, 8: 5000011}[dtype.itemsize]
    pictures = {"coast": ((coast().astype(np.int64) - 128 * (dtype.kind == "i")) * step).astype(dtype), "noise": noise(dtype)}
    grey_levels = {"coast": step, "noise": 2 ** (8 * dtype.itemsize - 8)}
    for _, name, attribute, connectivity, rule, kept in table:
        thresholds = {"area": [10, 100, 1000], "diagonal": [3, 12.5, 40], "inertia": [0.15, 0.25, 0.5],
                      "std": [level * grey_levels[name] for level in (3, 10, 30)]}[attribute]
        planes = ap.profile(pictures[name], attribute, thresholds, connectivity=int(connectivity), rule=rule)
        assert digest(planes) == kept, (name, attribute, connectivity, rule)


def laid_out(image, layout):
    """The same values, laid out otherwise in memory."""
    if layout == "columns":
        return np.asfortranarray(image)
    if layout == "swapped":
        return image.astype(image.dtype.newbyteorder())
    if layout == "unaligned":
        room = np.zeros(image.nbytes + 1, np.uint8)[1:].view(image.dtype).reshape(image.shape)
        room[...] = image
        return room
    if layout == "sliced":
        room = np.full([3 * n for n in image.shape], 7, image.dtype)[2::3, 1::3]
        room[...] = image
        return room
    return np.ascontiguousarray(image[::-1, ::-1])[::-1, ::-1]


@given(images(), CALLS, st.sampled_from(["columns", "swapped", "unaligned", "sliced", "reversed"]))
def test_layout_does_not_matter(image, call, layout):
    other = laid_out(image, layout)
    other.setflags(write=False)
    planes = ap.profile(other, **call)
    assert planes.dtype == other.dtype
    np.testing.assert_array_equal(planes, ap.profile(image, **call))
    np.testing.assert_array_equal(other, image)


@given(images(), st.sampled_from(["area", "diagonal"]), st.sampled_from([4, 8]))
def test_laws(image, attribute, connectivity):
    thresholds = THRESHOLDS[attribute]

    def planes_of(pixels):
        return ap.profile(pixels, attribute, thresholds, connectivity=connectivity)

    planes = planes_of(image)
    np.testing.assert_array_equal(planes[2], image)
    assert (planes[:-1] >= planes[1:]).all()
    np.testing.assert_array_equal(planes_of(~image), ~planes[::-1])
    for k in range(5):
        np.testing.assert_array_equal(planes_of(planes[k])[k], planes[k])
    for alias in (attribute[0], attribute):
        for rule in RULES:
            same = ap.profile(image, alias, thresholds, connectivity=connectivity, rule=rule)
            np.testing.assert_array_equal(same, planes)


def test_defaults_and_conversions_are_those_of_the_function():
    image = coast()[:60, :60].astype(np.int16)
    for letter, rule in zip("adis", ["min", "min", "sub", "sub"]):
        expected = ap.profile(image, letter, [0.2, 30.0], connectivity=4, rule=rule)
        np.testing.assert_array_equal(ap.profile(image, letter, [0.2, 30.0]), expected)
    np.testing.assert_array_equal(ap.profile(image, "a", 9.9), ap.profile(image, "a", 9))
    assert (ap.profile(image, "a", -1)[0] == image.max()).all()  # 4294967295 pixels
    np.testing.assert_array_equal(ap.profile(image, "a", [np.nan, np.inf])[0], image)  # both are 0
    assert (ap.profile(image, "d", [np.nan])[2] == image.min()).all()  # nothing passes
    np.testing.assert_array_equal(ap.profile(np.array([[4, 9, 3, 5, 1]]), "std", 2.5)[2], [[2, 2, 1, 1, 1]])


@settings(max_examples=30)
@given(images(side=8), CALLS, st.integers(1, 4))
def test_bands_are_profiles_one_by_one(image, call, workers):
    bands = np.stack([image, image[::-1], ~image])
    planes = ap.extended_profile(bands, **call, workers=workers)
    np.testing.assert_array_equal(planes, [ap.profile(band, **call) for band in bands])


def test_threads_give_the_bits_of_calls_in_turn():
    image = np.kron(coast(), np.ones((3, 3), np.uint8))
    calls = [(image.astype(dtype), name, THRESHOLDS[name]) for dtype in DTYPES[1:4] for name in ATTRIBUTES]
    with ThreadPoolExecutor(4) as pool:
        together = list(pool.map(lambda call: ap.profile(*call), calls))
    for planes, call in zip(together, calls):
        np.testing.assert_array_equal(planes, ap.profile(*call))


def test_other_threads_run_during_a_call():
    image = np.random.default_rng(3).integers(0, 200, (1500, 1500), dtype=np.uint8)
    beats, done = [], threading.Event()

    def beat():
        while not done.wait(0.005):
            beats.append(time.perf_counter())

    thread = threading.Thread(target=beat)
    thread.start()
    begin = time.perf_counter()
    ap.profile(image, "area", [10])
    end = time.perf_counter()
    done.set()
    thread.join()
    assert sum(begin < t < end for t in beats) > (end - begin) / 0.1


def test_ctrl_c_ends_a_long_call():
    image = np.random.default_rng(4).integers(0, 250, (4000, 4000), dtype=np.uint16)
    signals = threading.Timer(0.3, os.kill, (os.getpid(), signal.SIGINT))
    signals.start()
    begin = time.perf_counter()
    with pytest.raises(KeyboardInterrupt):
        ap.profile(image, "inertia", np.arange(30) / 10)
    assert time.perf_counter() - begin < 2.3
    image[...] = 0  # what was left behind does not look at it
    small = coast()
    np.testing.assert_array_equal(ap.profile(small, "a", 9)[1], small)


@pytest.mark.skipif(SANITIZED, reason="the sanitizer takes more memory than any limit")
def test_no_memory_is_an_error_and_the_session_goes_on():
    code = """if True:
        import resource, numpy as np, attribute_profile as ap
        used = int(open('/proc/self/statm').read().split()[0]) * resource.getpagesize()
        image = np.random.default_rng(5).integers(0, 250, (1500, 1500), dtype=np.int32)
        for room in (40, 100):  # megabytes: too few for the planes, too few for the work
            resource.setrlimit(resource.RLIMIT_AS, (used + room * 2**20, -1))
            try:
                ap.profile(image, 'std', [1, 2, 3])
            except MemoryError as error:
                print(error)
        resource.setrlimit(resource.RLIMIT_AS, (-1, -1))
        print((ap.profile(image, 'std', [1, 2, 3])[3] == image).all())
    """
    found = subprocess.run([sys.executable, "-c", code], capture_output=True, text=True)
    error = "no memory for the planes or for the work on them"
    assert found.stdout.splitlines() == [error, error, "True"], found.stderr


WRONG = [
    (dict(image=np.zeros((3, 3))), TypeError, r"image: dtype float64 .* after scaling"),
    (dict(image=np.zeros((3, 3), bool)), TypeError, r"image\.astype\('uint8'\)"),
    (dict(image=np.zeros((3, 3), complex)), TypeError, "image: dtype complex128"),
    (dict(image=np.array([["a"]])), TypeError, "image: dtype"),
    (dict(image=[[1, 2], [None, 3]]), TypeError, "image: dtype object"),
    (dict(image=np.ma.masked_equal([[1, 2]], 2)), TypeError, r"image\.filled"),
    (dict(image=np.zeros((3, 3, 3), int)), ValueError, r"image: shape \(3, 3, 3\) is not \(rows, columns\)"),
    (dict(image=np.zeros((0, 3), int)), ValueError, "image: .* has no pixels"),
    (dict(image=np.zeros((1, 32766), int)), ValueError, "image: .* at most 32765 .* profile_scene"),
    (dict(attribute="Area"), ValueError, "attribute: .* 'area' \\('a'\\)"),
    (dict(attribute=4), TypeError, "attribute: .* string"),
    (dict(thresholds=[]), ValueError, "thresholds: .* one"),
    (dict(thresholds="10"), TypeError, "thresholds: .* numbers"),
    (dict(thresholds=[True]), TypeError, "thresholds: .* numbers"),
    (dict(thresholds=[1j]), TypeError, "thresholds: .* numbers"),
    (dict(thresholds=[[1, 2]]), ValueError, r"thresholds: .* \(1, 2\)"),
    (dict(thresholds=[1, [2]]), ValueError, "thresholds: .* flat"),
    (dict(connectivity=6), ValueError, "connectivity: .* 4 or 8"),
    (dict(connectivity=None), TypeError, "connectivity: .* 4 or 8"),
    (dict(rule="most"), ValueError, "rule: .* 'sub'"),
    (dict(rule=1), TypeError, "rule: .* string"),
]


@pytest.mark.parametrize("wrong, error, text", WRONG)
def test_errors_name_the_argument_and_the_mend(wrong, error, text):
    right = dict(image=np.zeros((3, 3), np.uint8), attribute="area", thresholds=[2])
    with pytest.raises(error, match=text):
        ap.profile(**{**right, **wrong})
    if "image" not in wrong:
        bands = {"bands": np.zeros((2, 3, 3), np.uint8), **right, **wrong}
        del bands["image"]
        with pytest.raises(error, match=text):
            ap.extended_profile(**bands)


@given(images().flatmap(lambda image: st.tuples(st.just(image), st.just(np.flip(image)))))
def test_differences_are_exact_or_refused(pair):
    planes = np.stack([*pair, pair[0]])
    exact = [[int(a) - int(b) for a, b in zip(x.flat, y.flat)] for x, y in zip(planes, planes[1:])]
    if all(-(2**63) <= d < 2**63 for row in exact for d in row):
        found = ap.differential_profile(np.stack([planes, planes]))
        assert found.dtype.itemsize == min(2 * planes.itemsize, 8) and found.dtype.kind == "i"
        assert found[1].reshape(2, -1).tolist() == exact
    else:
        with pytest.raises(ValueError, match="does not fit int64"):
            ap.differential_profile(planes)
    for count in (1, 2, 4):
        with pytest.raises(ValueError, match="planes: .* 2 N"):
            ap.differential_profile(np.resize(planes, (count, 2, 2)))


@settings(max_examples=30)
@given(images(dtypes=DTYPES[:4]), st.sampled_from([1, 3, 7, 31]))
def test_local_means_are_means_over_what_lies_in_the_image(image, size):
    half = size // 2
    expected = [[image[max(r - half, 0):r + half + 1, max(c - half, 0):c + half + 1].mean()
                 for c in range(image.shape[1])] for r in range(image.shape[0])]
    np.testing.assert_allclose(ap.local_means(image[np.newaxis], size)[0], expected, rtol=1e-6)
    with pytest.raises(ValueError, match="size: .* odd"):
        ap.local_means(image, size + 1)


def test_plots_show_planes_and_curve(monkeypatch):
    monkeypatch.setenv("MPLBACKEND", "agg")
    image = coast().astype(np.int32) * 1000
    thresholds = ap.choose_thresholds(image, "area", 2)
    planes = ap.profile(image, "area", thresholds)
    _, axes = ap.plot_profile(planes, thresholds)
    for plane, axis in zip(planes, axes):
        np.testing.assert_array_equal(axis.images[0].get_array(), plane)
        assert axis.images[0].get_clim() == (image.min(), image.max())
    assert axes[-1].get_title() == f"bright < {thresholds[1]:.0f}" and axes[2].get_title() == "input"
    curve = ap.granulometric_curve(image, "area")
    _, axis = ap.plot_curve(*curve, thresholds, attribute="a")
    np.testing.assert_array_equal(axis.lines[0].get_xydata().T, curve)
    np.testing.assert_array_equal(axis.lines[1].get_xdata(), thresholds)
    assert (axis.get_xlabel(), axis.get_xscale()) == ("area, pixels", "log")


def test_progress_counts_bands(monkeypatch):
    import tqdm.auto

    bars = []
    monkeypatch.setattr(tqdm.auto, "tqdm", lambda **options: bars.append(tqdm.tqdm(**options)) or bars[-1])
    ap.extended_profile(np.zeros((5, 9, 9), np.int8), "a", 3, workers=2, progress=True)
    assert (bars[0].n, bars[0].total) == (5, 5)


def test_neighbours_are_imported_only_when_needed():
    code = "import sys, attribute_profile; print([m for m in ('matplotlib', 'xarray', 'dask') if m in sys.modules])"
    assert subprocess.run([sys.executable, "-c", code], capture_output=True, text=True).stdout == "[]\n"


def test_every_public_function_has_a_runnable_example_or_a_plot():
    for name in ap.__all__[1:]:
        text = inspect.getdoc(getattr(ap, name))
        assert all(part in text for part in ("Parameters\n", "Returns\n", "Raises\n"))
        assert ">>>" in text or name == "plot_curve"
