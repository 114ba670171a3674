#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""Runs the benchmarks and prints the figures with their limits, then the details.

    run.py BUILD_FOLDER PICTURE_FOLDER RESULT_FOLDER SIDE SIDES...
    run.py --against OTHER_BUILD BUILD_FOLDER PICTURE_FOLDER RESULT_FOLDER SIDE SIDES...

--against measures the calls of two builds in turn, such as the state before a change and after it, and nothing else.

SIDE is that of the pictures on which most is measured, SIDES are those of the mosaics of growing size. Writes
results.json into RESULT_FOLDER. The limits hold for a SIDE of 2048.
"""
import json
import pathlib
import platform
import statistics
import subprocess
import sys

AREA = [100, 500, 1000, 5000]
MORE_AREA = AREA + [200, 300, 700, 1500, 2000, 3000, 8000, 10000]
THRESHOLDS = {"area": AREA, "diagonal": [10, 50, 100, 500], "inertia": [0.2, 0.3, 0.4, 0.5],
              "std": [10, 20, 30, 40]}
HARD_UINT8 = ["constant", "ramp", "noise", "checkerboard", "spiral"]
HARD_INT32 = ["ramp", "noise"]
CLASSES = ["uint8", "uint16", "int32"]


def run(*command):
    print(".. " + pathlib.Path(command[0]).name, file=sys.stderr, flush=True)
    return subprocess.run(list(map(str, command)), check=True, stdout=subprocess.PIPE, text=True).stdout


def case(side, value_class="uint8", picture="mosaic", attribute="area", connectivity=4, thresholds=None):
    """What tells one call from another: the name of its picture, attribute, connectivity and thresholds."""
    chosen = thresholds or THRESHOLDS[attribute]
    return f"{picture}-{side}-{value_class}", attribute, connectivity, "/".join(map(str, chosen))


class Calls:
    """Runs whole calls in groups; the calls of a group are measured in turn."""

    def __init__(self, program, pictures):
        self.program, self.pictures, self.rows = program, pictures, []

    def measure(self, cases, *options):
        """The results of the cases, by case."""
        lines = run(self.program, *options,
                    *(f"{self.pictures}/" + ",".join(map(str, c)) for c in cases)).splitlines()
        results = [self.summary(json.loads(line)) for line in lines]
        self.rows += [{"picture": c[0], "attribute": c[1], "connectivity": c[2],
                       "thresholds": c[3].count("/") + 1, **r}
                      for c, r in zip(cases, results)]
        return dict(zip(cases, results))

    @staticmethod
    def summary(samples):
        ms, floor, faults, peak = (statistics.median(samples[key])
                                   for key in ("call_ms", "floor_ms", "page_faults", "peak_bytes"))
        sites = samples["sites"]
        return {"ms": ms, "ns_per_site": 1e6 * ms / sites, "floor_ms": floor, "ratio": ms / floor,
                "peak_bytes_per_site": peak / sites, "median_page_faults": faults, "samples": samples}


def measure_figures(calls, peer, side, sides):
    """Yields (figure, where, value or None, unit, limit, whether the value has to reach the limit)."""
    square = f"{side} x {side}"
    area, eight, more = case(side), case(side, connectivity=8), case(side, thresholds=MORE_AREA)
    others = {a: case(side, attribute=a) for a in ("diagonal", "inertia", "std")}
    planes = calls.pictures / "planes"
    found = calls.measure([area, eight, more, *others.values()], "--save", planes)
    inertia = case(side, "int32", attribute="inertia")
    found |= calls.measure([case(side, "uint16"), case(side, "int32"), inertia])
    for value_class, limit in zip(CLASSES, (3.0, 2.1)):
        ratio = found[case(side, value_class)]["ratio"]
        yield "whole call / floor", f"{square} mosaic, {value_class}", ratio, "", limit, False
    # The floor of int32 sorts twice as long; it would hide what the call does.
    ratio = found[case(side, "int32")]["ms"] / found[case(side, "uint16")]["floor_ms"]
    yield "whole call / floor of uint16", f"{square} mosaic, int32", ratio, "", 2.9, False

    peer_program = pathlib.Path(__file__).resolve().with_name("peer.py")
    peer.update(json.loads(run(peer_program, calls.pictures / area[0], planes, *AREA)))
    planes.unlink()
    where = f"{square} mosaic, uint8" + ("" if peer["same_planes"] else ", but OTHER PLANES")
    yield "scikit-image / whole call", where, peer["ms"] / found[area]["ms"], "", 60, True

    python_cases = [area, case(side, "uint16"), case(side, attribute="std")]
    for c, times in zip(python_cases, measure_python(calls, python_cases)):
        where = f"{square} mosaic, {c[0].rsplit('-', 1)[1]}, {c[1]}"
        yield "call from Python / whole call", where, times["call"] / found[c]["ms"], "", 1.05, False
        if c == area:
            yield "scikit-image / call from Python", where, peer["ms"] / times["call"], "", 60, True
            ratio = times["workers 2"] / times["workers 1"]
            yield "four bands from Python, two workers / one", where, ratio, "", 0.6, False

    growing = calls.measure([case(s) for s in sides])
    calls.measure([case(s, value_class) for s in sides for value_class in CLASSES[1:] if s != side])
    small, large = (growing.get(case(s), {}).get("ns_per_site") for s in (1024, 4096))
    growth = large / small if small and large else None
    yield "ns per site, 4096 / 1024", "uint8 mosaics", growth, "", 1.35, False

    for attribute in ("inertia", "std"):
        yield (f"{attribute}, default rule / area, min", f"{square}, uint8",
               found[others[attribute]]["ms"] / found[area]["ms"], "", 1.2, False)
    yield ("8-connectivity / 4-connectivity", f"{square}, uint8", found[eight]["ms"] / found[area]["ms"], "",
           1.5, False)

    hard = [(p, "uint8") for p in HARD_UINT8] + [(p, "int32") for p in HARD_INT32]
    hard_found = calls.measure([area, case(side, "int32"), *(case(side, c, p) for p, c in hard)])
    for picture, value_class in hard:
        ratio = hard_found[case(side, value_class, picture)]["ms"] / hard_found[case(side, value_class)]["ms"]
        yield "hard image / mosaic, ns per site", f"{square}, {picture}, {value_class}", ratio, "", 2.1, False

    # A threshold adds a plane of each tree.
    further = (found[more]["ns_per_site"] - found[area]["ns_per_site"]) / (2 * (len(MORE_AREA) - len(AREA)))
    yield "each further threshold, a plane", f"{square}, uint8", further, "ns a site", 2.5, False
    for name, c, limit in (("area, uint8", area, 20), ("inertia, int32", inertia, 60)):
        yield ("peak memory beyond input and output", f"{square}, {name}", found[c]["peak_bytes_per_site"],
               "bytes a site", limit, False)


def measure_python(calls, cases):
    """Milliseconds of the same calls from Python, for each case."""
    program = pathlib.Path(__file__).resolve().with_name("python_call.py")
    folder = calls.program.parent.parent / "python"
    arguments = (f"{calls.pictures}/" + ",".join(map(str, c)) for c in cases)
    return map(json.loads, run("env", f"PYTHONPATH={folder}", sys.executable, program, *arguments).splitlines())


def measure_stages(program, pictures, side):
    """Milliseconds by stage and by class, and their sum; by area, and for the default rules of the other attributes."""
    cases = [case(side, c) for c in CLASSES] + [case(side, attribute=a) for a in ("diagonal", "inertia", "std")]
    table = {}
    for c, line in zip(cases, run(program, *(f"{pictures}/" + ",".join(map(str, c)) for c in cases)).splitlines()):
        stages = {k: v for k, v in json.loads(line).items() if k not in ("case", "sites")}
        call = stages.pop("whole call")
        column = f"{c[0].rsplit('-', 1)[1]}, {c[1]}"
        for stage, ms in [*stages.items(), ("sum", sum(stages.values())), ("whole call", call)]:
            table.setdefault(stage, {})[column] = ms
    return table


def compare(other, build, pictures, side, sides):
    """Prints the medians of 15 calls of each build. Their runs take turns, so a slow hour slows both."""
    cases = [case(s, c) for s in (side, *sides) for c in CLASSES]
    cases += [case(side, attribute=a) for a in ("diagonal", "inertia", "std")]
    cases += [case(side, connectivity=8), case(side, thresholds=MORE_AREA)]
    cases = list(dict.fromkeys(cases))
    arguments = [f"{pictures}/" + ",".join(map(str, c)) for c in cases]
    samples = {b: {c: {"call_ms": [], "peak_bytes": []} for c in cases} for b in (other, build)}
    for turn in range(3):
        for b in (other, build) if turn % 2 == 0 else (build, other):
            for c, line in zip(cases, run(b / "bench/bench_call", "--no-floor", *arguments).splitlines()):
                result = json.loads(line)
                for key in ("call_ms", "peak_bytes"):
                    samples[b][c][key] += result[key]
                samples[b][c]["sites"] = result["sites"]
    rows = []
    for c in cases:
        before, now = (samples[b][c] for b in (other, build))
        ms = [statistics.median(s["call_ms"]) for s in (before, now)]
        peaks = [statistics.median(s["peak_bytes"]) / s["sites"] for s in (before, now)]
        rows.append([c[0], c[1], c[2], c[3].count("/") + 1, *ms, ms[1] / ms[0], *peaks])
    print_table("Calls of two builds, medians", ["picture", "attribute", "connectivity", "thresholds", "before, ms",
                                                "now, ms", "now / before", "peak before, bytes a site", "now"], rows)


def print_table(title, head, rows):
    rows = [[f"{cell:.2f}" if isinstance(cell, float) else str(cell) for cell in row]
            for row in (head, *rows)]
    widths = [max(map(len, column)) for column in zip(*rows)]
    print(f"\n{title}\n")
    for row in [rows[0], ["-" * width for width in widths], *rows[1:]]:
        print("| " + " | ".join(cell.ljust(width) for cell, width in zip(row, widths)) + " |")


def main(build, pictures, results, side, *sides):
    build, pictures, results = (pathlib.Path(folder).resolve() for folder in (build, pictures, results))
    calls, peer, figures = Calls(build / "bench/bench_call", pictures), {}, []
    sides = list(map(int, sides))
    for name, where, value, unit, limit, least in measure_figures(calls, peer, int(side), sides):
        met = "-" if value is None else "yes" if (value >= limit if least else value <= limit) else "NO"
        figures.append({"figure": name, "where": where,
                        "measured": "not measured" if value is None else value, "unit": unit,
                        "limit": f"at {'least' if least else 'most'} {limit}", "met": met})
    stages = measure_stages(build / "bench/bench_stages", pictures, side)

    print_table("Figures" if side == "2048" else "Figures; the limits are meant for 2048 x 2048", figures[0],
                [f.values() for f in figures])
    head = [key for key in calls.rows[0] if key != "samples"]
    print_table("Whole calls, medians", head, [[row[key] for key in head] for row in calls.rows])
    print(f"\nscikit-image: {peer['ms']:.0f} ms, same planes: {peer['same_planes']}")
    columns = list(stages["tree"])
    print_table(f"Stages of a call at {side} x {side}, ms, both trees together", ["stage", *columns],
                [[stage, *(row[c] for c in columns)] for stage, row in stages.items()])
    (results / "results.json").write_text(json.dumps(
        {"machine": f"{platform.processor()} {platform.platform()}", "side": int(side), "figures": figures,
         "calls": calls.rows, "scikit-image": peer, "stages_ms": stages}, indent=1) + "\n")


if __name__ == "__main__":
    if sys.argv[1] == "--against":
        other, build, pictures, _, side, *sides = sys.argv[2:]
        compare(pathlib.Path(other), pathlib.Path(build), pictures, int(side), list(map(int, sides)))
    else:
        main(*sys.argv[1:])
