#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""Times calls from Python.

    python_call.py PICTURE,ATTRIBUTE,CONNECTIVITY,THRESHOLD/THRESHOLD/... ...

Prints a line of JSON for each case, in milliseconds: the processor time of `profile`, all threads together, and the time
that passes while `extended_profile` has four such bands, by one worker and by two. Each sample comes from a new process,
as in bench_call, so that earlier work left nothing in the heap.
"""
import json
import os
import statistics
import sys
import time

import numpy as np
from peer import read_picture

import attribute_profile as ap

ROUNDS = 9
BANDS = 4


def in_child(clock, call):
    """What the call takes by the clock, in milliseconds, in a process of its own."""
    read, write = os.pipe()
    if os.fork() == 0:
        start = clock()
        result = call()
        os.write(write, repr(1000 * (clock() - start)).encode())
        del result
        os._exit(0)
    os.wait()
    os.close(write)
    with os.fdopen(read) as text:
        return float(text.read())


def measure(case):
    path, attribute, connectivity, thresholds = case.split(",")
    image = read_picture(path)
    bands = np.stack([image] * BANDS)
    settings = attribute, [float(t) for t in thresholds.split("/")]
    options = {"connectivity": int(connectivity)}
    calls = {"call": (time.process_time, lambda: ap.profile(image, *settings, **options))}
    for workers in (1, 2):
        calls[f"workers {workers}"] = (
            time.perf_counter, lambda n=workers: ap.extended_profile(bands, *settings, **options, workers=n))
    samples = {name: [] for name in calls}
    for _ in range(ROUNDS):
        for name, (clock, call) in calls.items():
            samples[name].append(in_child(clock, call))
    return {name: statistics.median(times) for name, times in samples.items()}


for argument in sys.argv[1:]:
    print(json.dumps(measure(argument)))
