"""Brings a catalogue up to date: headers are read of files that are new or changed, and of no others."""

from __future__ import annotations

import copy
import os
from collections.abc import Iterable
from pathlib import Path
from typing import Any, NamedTuple

import pyarrow as pa
import pyarrow.compute as pc
import pyarrow.parquet as pq

from ..errors import MissingFileError
from . import _store
from ._folders import Seen, walk
from ._tables import FILES, channel_rows, file_row, item_rows, stored_path
from ._tool import scan

_MOST_PARTS = 16
_MOST_DEAD = 4  # compaction when more than one row of so many is dead


class Report(NamedTuple):
    """What an update did, in numbers of files."""

    files: int
    """in the catalogue now"""
    read: int
    """whose headers were read"""
    moved: int
    """of these, known by their content under another path"""
    removed: int
    """that are no longer there"""
    unreadable: int
    """in the catalogue that cannot be read"""


def update(folder: Path, roots: Iterable[str | os.PathLike[str]]) -> Report:
    """Brings the catalogue up to date with its folders and with more of them, or makes it."""
    with _store.locked(folder):
        try:
            before = _store.read_manifest(folder)
        except MissingFileError:
            before = {}
        manifest = copy.deepcopy(before) or _store.new_manifest()
        added = [os.path.realpath(root) for root in roots]
        manifest["roots"] = _outermost([*manifest["roots"], *added])
        for root in added:
            os.stat(root)  # one that was given must be there; one that was there before may be gone
        return _Update(folder, before, manifest).run()


def _outermost(roots: list[str]) -> list[str]:
    """The roots without those inside others, so that no file is found twice."""
    unique = sorted(set(roots))
    return [root for root in unique if not any(other != root and _is_inside(root, other) for other in unique)]


def _is_inside(path: str, folder: str) -> bool:
    return path.startswith(folder.rstrip(os.sep) + os.sep)


class _Update:
    """One update of a locked catalogue."""

    def __init__(self, folder: Path, before: _store.Manifest, manifest: _store.Manifest) -> None:
        self._folder = folder
        self._before = before
        self._manifest = manifest
        self._old = _read_files(folder, manifest)
        self._row_of = {path: row for row, path in enumerate(self._old["path"].to_pylist())}

    def run(self) -> Report:
        kept, changed = self._compare()
        gone = set(range(self._old.num_rows)) - set(kept)
        moved, read = 0, len(changed)
        if not gone and not changed and self._manifest == self._before:
            return self._report(self._old, 0, 0)
        files = _store.Part(self._folder, "files")
        files.add_table(self._old.take(pa.array(kept, pa.int64())))
        self._by_content = {
            (content, self._old["size"][row].as_py()): row
            for row in sorted(gone)
            if (content := self._old["id"][row].as_py())
        }
        channels, items = _store.Part(self._folder, "channels"), _store.Part(self._folder, "items")
        for seen, record in self._records(changed):
            row = self._same_content(seen, record)
            if row is not None:
                moved += seen.path not in self._row_of
                files.add([file_row(self._old["file"][row].as_py(), *seen, record)])
                continue
            number = self._manifest["next"]
            self._manifest["next"] += 1
            files.add([file_row(number, *seen, record)])
            channels.add(channel_rows(number, record))
            items.add(item_rows(number, record))
        self._manifest["files"] = files.close()
        self._manifest["channels"] += channels.close()
        self._manifest["items"] += items.close()
        return self._finish(moved, read)

    def _finish(self, moved: int, read: int) -> Report:
        new = _read_files(self._folder, self._manifest)
        _compact(self._folder, self._manifest, new)
        _store.write_manifest(self._folder, self._manifest)
        return self._report(new, moved, read)

    def _report(self, new: pa.Table, moved: int, read: int) -> Report:
        paths = set(new["path"].to_pylist())
        removed = sum(path not in paths for path in self._row_of) - moved
        unreadable = new.num_rows - new["error"].null_count
        return Report(new.num_rows, read, moved, removed, unreadable)

    def _compare(self) -> tuple[list[int], list[Seen]]:
        """The rows of files that are as they were, and the files that are new or changed."""
        sizes, times = self._old["size"].to_numpy(), self._old["modified_ns"].to_numpy()
        kept, changed = [], []
        for seen in walk(root for root in self._manifest["roots"] if os.path.exists(root)):
            row = self._row_of.get(stored_path(seen.path))
            if row is not None and (sizes[row], times[row]) == (seen.size, seen.modified_ns):
                kept.append(row)
            else:
                changed.append(seen)
        return kept, changed

    def _records(self, changed: list[Seen]) -> Iterable[tuple[Seen, dict[str, Any]]]:
        by_path = {seen.path: seen for seen in changed}
        for path, record in scan(list(by_path)):
            yield by_path[path], record

    def _same_content(self, seen: Seen, record: dict[str, Any]) -> int | None:
        """The row of a file that is gone, or was here, with the same content: its other rows stay as they are."""
        content = record.get("id")
        return self._by_content.pop((content, seen.size), None) if content else None


def _read_files(folder: Path, manifest: _store.Manifest) -> pa.Table:
    tables = [pq.read_table(folder / name, schema=FILES) for name in manifest["files"]]
    return pa.concat_tables(tables) if tables else FILES.empty_table()


def _compact(folder: Path, manifest: _store.Manifest, files: pa.Table) -> None:
    """Makes one part of many, without dead rows, where there are many of either."""
    alive = files["file"].combine_chunks()
    for table in ("channels", "items"):
        parts = [pq.ParquetFile(folder / name) for name in manifest[table]]
        rows = sum(part.metadata.num_rows for part in parts)
        living = sum(pc.is_in(group["file"], alive).to_numpy().sum() for group in _groups(parts, ["file"]))
        if len(parts) <= _MOST_PARTS and (rows - living) * _MOST_DEAD <= rows:
            continue
        whole = _store.Part(folder, table)
        for group in _groups(parts, None):
            whole.add_table(group.filter(pc.is_in(group["file"], alive)))
        manifest[table] = whole.close()


def _groups(parts: list[pq.ParquetFile], columns: list[str] | None) -> Iterable[pa.Table]:
    for part in parts:
        for group in range(part.metadata.num_row_groups):
            yield part.read_row_group(group, columns=columns)
