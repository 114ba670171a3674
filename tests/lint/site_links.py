# SPDX-License-Identifier: MIT
"""site_links.py FOLDER: every link, anchor, picture and style of the site in FOLDER leads to something in it.

Nothing comes from the network but where a reader follows a link.
"""
import sys
from html.parser import HTMLParser
from pathlib import Path
from urllib.parse import unquote, urlsplit


class Page(HTMLParser):
    """The anchors of a page, its links, and what it loads."""

    def __init__(self, file):
        super().__init__()
        self.anchors, self.links, self.loads = {"", "top"}, [], []
        self.feed(file.read_text())

    def handle_starttag(self, tag, attrs):
        values = dict(attrs)
        self.anchors.add(values.get("id", ""))
        if tag == "a":
            self.links.append(values.get("href", ""))
        else:
            self.loads += [values[name] for name in ("src", "href", "data") if name in values]


def faults(folder):
    pages = {file: Page(file) for file in sorted(folder.rglob("*.html"))}
    if not pages:
        yield f"{folder}: no pages"
    for file, page in pages.items():
        yield from (f"{file}: loads {link}" for link in page.loads if urlsplit(link).netloc)
        for link in page.links + page.loads:
            target = urlsplit(link)
            path = (file.parent / unquote(target.path)).resolve() if target.path else file
            anchor = unquote(target.fragment)
            found = path.is_file() and anchor in getattr(pages.get(path), "anchors", {anchor})
            if not (target.scheme or target.netloc or found):
                yield f"{file}: {link} leads nowhere"


sys.exit("\n".join(faults(Path(sys.argv[1]).resolve())) or None)
