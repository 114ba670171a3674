#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""Measures the program on raster files: wall time, pixels a second and peak memory.

    program.py PROGRAM PICTURE_FOLDER RESULT_FOLDER SIDE

On the uint8 mosaic of SIDE x SIDE pixels, by area 100 and 1000, for 1 and 2 jobs and beside gdal_translate of as many
bands. The runs take turns; a figure is the median of three. Writes program.json into RESULT_FOLDER.
"""
import json
import os
import pathlib
import statistics
import subprocess
import sys
import time

RAW = """<VRTDataset rasterXSize="{side}" rasterYSize="{side}">
  <VRTRasterBand dataType="Byte" band="1" subClass="VRTRawRasterBand">
    <SourceFilename>{file}</SourceFilename><ImageOffset>{offset}</ImageOffset>
    <PixelOffset>1</PixelOffset><LineOffset>{side}</LineOffset>
  </VRTRasterBand>
</VRTDataset>
"""
PLANES = 5
ROUNDS = 3


def make_scene(picture, side, folder):
    """A tiled GeoTIFF of a picture: a line of text, then the pixels."""
    with open(picture, "rb") as file:
        offset = len(file.readline())
    raw, scene = folder / "scene.vrt", folder / "scene.tif"
    raw.write_text(RAW.format(side=side, file=picture, offset=offset))
    subprocess.run(["gdal_translate", "-q", "-co", "TILED=YES", raw, scene], check=True)
    return scene


def measure(command):
    """Seconds of the clock and megabytes at the peak."""
    begin = time.monotonic()
    process = subprocess.Popen(list(map(str, command)))
    _, status, usage = os.wait4(process.pid, 0)
    if status != 0:
        sys.exit(f"failed: {command}")
    return time.monotonic() - begin, usage.ru_maxrss / 1000


def main(program, pictures, results, side):
    folder, side = pathlib.Path(results).resolve(), int(side)
    scene = make_scene(pathlib.Path(pictures).resolve() / f"mosaic-{side}-uint8", side, folder)
    output = folder / "profile.tif"
    commands = {}
    for name, options in {"DEFLATE": ["COMPRESS=DEFLATE", "ZLEVEL=1"], "no compression": ["COMPRESS=NONE"]}.items():
        chosen = [word for option in options for word in ("-co", option)]
        for jobs in (1, 2):
            commands[f"{name}, {jobs} jobs"] = [program, "-q", scene, output, "area", 100, 1000, "-j", jobs, *chosen]
        commands[f"{name}, gdal_translate"] = ["gdal_translate", "-q", *["-b", 1] * PLANES, scene, output, "-co", "TILED=YES",
                                               "-co", "INTERLEAVE=BAND", *chosen]
    found = {name: [] for name in commands}
    for _ in range(ROUNDS):
        for name, command in commands.items():
            found[name].append(measure(command))
            output.unlink()
    print(f"\nFrom file to file, {side} x {side} pixels of uint8, area 100 and 1000\n")
    print("| Run | Seconds | Million pixels a second | Peak, MB |\n| --- | --- | --- | --- |")
    rows = {}
    for name, runs in found.items():
        seconds, peak = (statistics.median(column) for column in zip(*runs))
        rows[name] = {"seconds": seconds, "peak_mb": peak}
        print(f"| {name} | {seconds:.2f} | {side * side / seconds / 1e6:.1f} | {peak:.0f} |")
    (folder / "program.json").write_text(json.dumps(rows, indent=1))
    scene.unlink()


if __name__ == "__main__":
    main(*sys.argv[1:])
