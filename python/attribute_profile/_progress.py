# SPDX-License-Identifier: MIT
from __future__ import annotations

from contextlib import contextmanager
from typing import Callable, Iterator


@contextmanager
def counter(bands: int, shown: bool) -> Iterator[Callable[[int], object]]:
    """A function that is told how many bands are finished, and shows it if asked to."""
    if not shown:
        yield lambda finished: None
        return
    from tqdm.auto import tqdm

    with tqdm(total=bands, unit="band") as bar:
        yield lambda finished: bar.update(finished - bar.n)
