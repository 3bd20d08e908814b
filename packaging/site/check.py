"""Fails if a page below FOLDER has a link, an anchor, a picture, a script or a style that is not there, takes one from the
network, or has a picture without a description: check.py FOLDER."""

import sys
from html.parser import HTMLParser
from pathlib import Path
from urllib.parse import unquote, urlsplit

TARGETS = {"a": "href", "img": "src", "link": "href", "script": "src", "source": "src", "iframe": "src"}


class Page(HTMLParser):
    def __init__(self, path):
        super().__init__()
        self.ids, self.targets, self.bare = set(), [], []
        self.feed(path.read_text(encoding="utf-8"))

    def handle_starttag(self, tag, attributes):
        given = dict(attributes)
        self.ids |= {given[name] for name in ("id", "name") if given.get(name)}
        if given.get(TARGETS.get(tag)):
            self.targets.append((tag, given[TARGETS[tag]]))
        if tag == "img" and not given.get("alt"):
            self.bare.append(given.get("src"))


def faults_of(path, page, pages):
    for picture in page.bare:
        yield f"{picture} has no description"
    for tag, target in page.targets:
        parts = urlsplit(target)
        if parts.scheme or parts.netloc:
            if tag != "a" and parts.scheme != "data":
                yield f"{target} would be fetched"
            continue
        file = (path.parent / unquote(parts.path)).resolve() if parts.path else path
        if not file.exists():
            yield f"{target} is not there"
        elif parts.fragment and file in pages and unquote(parts.fragment) not in pages[file].ids:
            yield f"{target} has no such place"


def main(folder):
    # The viewer's page is checked by the viewer's own tests.
    pages = {path.resolve(): Page(path) for path in Path(folder).rglob("*.html") if path.name != "viewer.html"}
    faults = [f"{path}: {fault}" for path, page in pages.items() for fault in faults_of(path, page, pages)]
    print(*faults, f"{len(faults)} faults in {len(pages)} pages.", sep="\n")
    return 1 if faults or not pages else 0


sys.exit(main(sys.argv[1]))
