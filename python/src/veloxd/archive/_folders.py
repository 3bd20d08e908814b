"""Files in folders, with what tells whether they were changed."""

from __future__ import annotations

import os
from collections.abc import Iterable, Iterator
from typing import NamedTuple

_SUFFIX = ".oxd"


class Seen(NamedTuple):
    """A file as its folder has it; both numbers are -1 where the system does not tell them."""

    path: str
    size: int
    modified_ns: int


def walk(roots: Iterable[str]) -> Iterator[Seen]:
    """The .oxd files below folders, sorted within each folder; a root that is a file is one, whatever its name.

    Raises ``OSError`` for a root that does not exist.
    """
    for root in roots:
        if os.path.isdir(root):
            yield from _below(root)
        else:
            known = os.stat(root)
            yield Seen(root, known.st_size, known.st_mtime_ns)


def _below(folder: str) -> Iterator[Seen]:
    try:
        with os.scandir(folder) as listed:
            entries = sorted(listed, key=lambda entry: os.fsencode(entry.name))
    except OSError:
        return  # as `oxd scan` has it, a folder that cannot be listed keeps no other from being walked
    for entry in entries:
        if entry.is_dir():
            if not entry.is_symlink():
                yield from _below(entry.path)
        elif entry.name.lower().endswith(_SUFFIX):
            yield _seen(entry)


def _seen(entry: os.DirEntry[str]) -> Seen:
    try:
        known = entry.stat()
    except OSError:
        return Seen(entry.path, -1, -1)
    return Seen(entry.path, known.st_size, known.st_mtime_ns)
