#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""From a picture to a map of classes: profiles as features of a random forest.

    land_cover.py [--picture FILE]                       three textures of scikit-image with equal histograms
    land_cover.py SCENE POLYGONS MAP [--column NAME]     a scene of your own

In the first form the classifier learns from the left halves of the textures and is judged by the right ones; FILE gets
the test picture, the map, and what is wrong in it. In the second form SCENE is a raster file of integer bands, POLYGONS
a vector file with known places, whose column NAME (by default `class`) tells the class. Every other polygon of a class
is kept for the test. MAP becomes a GeoTIFF with the scene's place: 0 is no class, k the k-th class in the order that is
printed.

Prints how many test pixels are classified right by grey levels alone, by profiles, and by profiles with local means.
"""
import argparse

import numpy as np
from sklearn.ensemble import RandomForestClassifier

from attribute_profile import choose_thresholds, differential_profile, extended_profile, local_means

ATTRIBUTES = ["area", "diagonal", "inertia", "std"]
TEXTURES = ["grass", "gravel", "brick"]
MEANS = 15  # pixels, a side of the square
TRAINING_PIXELS = 20000  # of each class at most; a forest learns little from more


def features(bands, thresholds):
    """Three stacks of features, each features x rows x columns: what is added to the stack before."""
    profiles = [extended_profile(bands, name, levels) for name, levels in thresholds.items()]
    planes = np.concatenate([p.reshape(-1, *bands.shape[1:]) for p in profiles])
    steps = np.concatenate([differential_profile(p).reshape(-1, *bands.shape[1:]) for p in profiles])
    return {"grey levels alone": bands, "profiles": planes, f"means over {MEANS} x {MEANS} pixels": local_means(steps, MEANS)}


def learn(stack, labels):
    """A forest that knows the pixels with labels above 0."""
    rng = np.random.default_rng(0)
    known = [np.flatnonzero(labels == k) for k in np.unique(labels[labels > 0])]
    chosen = np.concatenate([rng.permutation(places)[:TRAINING_PIXELS] for places in known])
    forest = RandomForestClassifier(100, min_samples_leaf=5, n_jobs=-1, random_state=0)
    return forest.fit(stack.reshape(len(stack), -1)[:, chosen].T, labels.ravel()[chosen])


def predict(forest, stack):
    """The class of each pixel; some rows at a time, for a table of all features would not fit where pictures are large."""
    rows = max(1, 200000 // stack.shape[2])
    strips = (stack[:, row:row + rows] for row in range(0, stack.shape[1], rows))
    return np.concatenate([forest.predict(s.reshape(len(s), -1).T).reshape(s.shape[1:]) for s in strips])


def compare(training, test):
    """Judges the stacks, each added to those before; returns the last map. Both are (bands, labels)."""
    thresholds = {name: choose_thresholds(training[0][0], name, 4) for name in ATTRIBUTES}
    for name, levels in thresholds.items():
        print(f"{name}:", *(f"{level:.4g}" for level in levels))
    learned = features(training[0], thresholds)
    # Where both are one picture it is computed once.
    judged = learned if test[0] is training[0] else features(test[0], thresholds)
    for count, name in enumerate(learned, 1):
        stacks = [np.concatenate(list(stack.values())[:count]).astype(np.float32) for stack in (learned, judged)]
        found = predict(learn(stacks[0], training[1]), stacks[1])
        right = np.mean((found == test[1])[test[1] > 0])
        print(f"{'with ' if count == 3 else ''}{name}: {right:.2f}", flush=True)
    return found


def equalized(image):
    """The picture with as many pixels of each grey level: by their histograms textures can't be told apart."""
    ranks = np.empty(image.size, np.int64)
    ranks[np.argsort(image, axis=None, kind="stable")] = np.arange(image.size)
    return (ranks * 256 // image.size).astype(np.uint8).reshape(image.shape)


def mosaic(textures, seed, side=64):
    """Tiles of the textures in a random arrangement, 8 rows of 12, and their classes from 1."""
    tiles, labels = [], []
    for k, texture in enumerate(textures, 1):
        rows, cols = texture.shape[0] // side, texture.shape[1] // side
        for row in range(rows):
            for col in range(cols):
                tiles.append(texture[row * side:(row + 1) * side, col * side:(col + 1) * side])
                labels.append(np.full((side, side), k, np.uint8))
    order = np.random.default_rng(seed).permutation(len(tiles)).reshape(8, -1)
    return tuple(np.block([[parts[k] for k in row] for row in order]) for parts in (tiles, labels))


def map_textures(picture):
    from skimage import data

    halves = {"training": [], "test": []}
    for name in TEXTURES:
        left, right = np.hsplit(getattr(data, name)(), 2)
        halves["training"].append(equalized(left))
        halves["test"].append(equalized(right))
    training, test = (mosaic(halves[part], seed) for seed, part in enumerate(halves))
    found = compare((training[0][np.newaxis], training[1]), (test[0][np.newaxis], test[1]))
    if picture:
        draw(picture, test, found)


def draw(picture, test, found):
    import matplotlib.pyplot as plt
    from matplotlib.patches import Patch

    image, labels = test
    figure, axes = plt.subplots(1, 3, figsize=(12, 3.2), layout="constrained")
    axes[0].imshow(image, cmap="gray")
    axes[1].imshow(found, cmap="viridis", vmin=1, vmax=len(TEXTURES), interpolation="none")
    axes[2].imshow(found != labels, cmap="gray_r", interpolation="none")
    for axis, title in zip(axes, ["Test picture", "Map", "Wrong"]):
        axis.set(title=title, xticks=[], yticks=[])
    colours = plt.get_cmap("viridis")(np.linspace(0, 1, len(TEXTURES)))
    axes[2].legend([Patch(color=c) for c in colours], TEXTURES, loc="center left", bbox_to_anchor=(1.02, 0.5))
    figure.savefig(picture, dpi=80, bbox_inches="tight")


def map_scene(scene, polygons, output, column):
    import geopandas
    import rasterio
    from rasterio.features import rasterize

    with rasterio.open(scene) as file:
        bands, place = file.read(), {"crs": file.crs, "transform": file.transform}
    known = geopandas.read_file(polygons).to_crs(place["crs"])
    names = sorted(known[column].unique())
    print("classes:", *(f"{k} {name}" for k, name in enumerate(names, 1)))
    known["number"] = known[column].map({name: k for k, name in enumerate(names, 1)})
    turn = known.groupby("number").cumcount() % 2

    def labels(part):
        return rasterize(zip(part.geometry, part.number), bands.shape[1:], transform=place["transform"], dtype="uint8")

    found = compare((bands, labels(known[turn == 0])), (bands, labels(known[turn == 1])))
    size = {"height": bands.shape[1], "width": bands.shape[2], "count": 1, "dtype": "uint8", "nodata": 0}
    with rasterio.open(output, "w", driver="GTiff", compress="deflate", **size, **place) as file:
        file.write(found, 1)
        file.update_tags(1, **{f"class_{k}": name for k, name in enumerate(names, 1)})


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("scene", nargs="?")
    parser.add_argument("polygons", nargs="?")
    parser.add_argument("map", nargs="?")
    parser.add_argument("--column", default="class")
    parser.add_argument("--picture")
    wanted = parser.parse_args()
    if wanted.scene is None:
        map_textures(wanted.picture)
    elif wanted.map is None:
        parser.error("give SCENE, POLYGONS and MAP, or none of them")
    else:
        map_scene(wanted.scene, wanted.polygons, wanted.map, wanted.column)


if __name__ == "__main__":
    main()
