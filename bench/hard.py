#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""Compares hard pictures with photographs of the same class and size, by every attribute and rule.

    hard.py BUILD_FOLDER PICTURE_FOLDER RESULT_FOLDER SIDE

All calls have a stack of 512 kB: one that needs more for a deep tree or a long region ends the measurement.
Writes hard.json into RESULT_FOLDER.
"""
import collections
import itertools
import json
import pathlib
import resource
import statistics
import sys

from run import THRESHOLDS, print_table, run

RULES = ["min", "max", "direct", "sub"]
LIMIT = 4
SQUARES = {
    "uint8": "constant ramp noise checkerboard spiral serpentine two-values salt-and-pepper extremes",
    "uint16": "comb lying-comb extremes",
    "int32": "ramp noise distinct serpentine extremes",
}
LINES = ["1x32765", "32765x1"]
REPEATS = 20  # of a call on a line, which takes some milliseconds


def groups(side):
    """A photograph and what is compared with it, measured in turn."""
    for kind, names in SQUARES.items():
        yield [f"{name}-{side}-{kind}" for name in ["mosaic", *names.split()]], 1
    for line in LINES:
        yield [f"mosaic-{line}-int32", f"ramp-{line}-int32"], REPEATS


def measure(program, folder, pictures, repeats):
    """Nanoseconds a site by picture, attribute and rule: medians."""
    keys = repeats * list(itertools.product(pictures, THRESHOLDS, RULES))
    cases = [f"{folder}/{picture},{attribute},4,{'/'.join(map(str, THRESHOLDS[attribute]))},{rule}"
             for picture, attribute, rule in keys]
    samples = collections.defaultdict(list)
    for key, line in zip(keys, run(program, "--no-floor", *cases).splitlines()):
        result = json.loads(line)
        samples[key] += [1e6 * ms / result["sites"] for ms in result["call_ms"]]
    return {key: statistics.median(values) for key, values in samples.items()}


def main(build, pictures, results, side):
    resource.setrlimit(resource.RLIMIT_STACK, (512 * 1024, resource.getrlimit(resource.RLIMIT_STACK)[1]))
    rows = []
    for (photograph, *hard), repeats in groups(side):
        found = measure(pathlib.Path(build, "bench/bench_call"), pictures, [photograph, *hard], repeats)
        rows += [{"picture": picture, "attribute": attribute, "rule": rule, "ns_per_site": ns,
                  "ratio": ns / found[photograph, attribute, rule]}
                 for (picture, attribute, rule), ns in found.items()]

    worst = max(rows, key=lambda row: row["ratio"])
    print_table("Figure", ["figure", "where", "measured", "limit", "met"],
                [["hard image / mosaic, worst", ", ".join([worst["picture"], worst["attribute"], worst["rule"]]),
                  worst["ratio"], f"at most {LIMIT}", "yes" if worst["ratio"] <= LIMIT else "NO"]])
    print_table("ns a site (ratio to the mosaic)", ["picture", "attribute", *RULES],
                [[picture, attribute, *(f"{row['ns_per_site']:.1f} ({row['ratio']:.2f})" for row in of_rules)]
                 for (picture, attribute), of_rules
                 in itertools.groupby(rows, lambda row: (row["picture"], row["attribute"]))])
    pathlib.Path(results, "hard.json").write_text(json.dumps(rows, indent=1) + "\n")


if __name__ == "__main__":
    main(*sys.argv[1:])
