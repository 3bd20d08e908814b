"""The files of a catalogue: parts in Parquet, and one manifest that says which parts belong to it.

A part is never changed once a manifest names it. An update writes new parts first and replaces the manifest last, in
one step, so that a reader has the old catalogue or the new one. Rows of channels and items whose file number is no
longer in the table of files are dead; views leave them out, and a compaction drops them.
"""

from __future__ import annotations

import contextlib
import json
import os
import secrets
from collections.abc import Iterable, Iterator
from pathlib import Path
from typing import Any

import pyarrow as pa
import pyarrow.parquet as pq

from .._replacing import replacement
from ..errors import DamagedFileError, MissingFileError
from ._tables import SCHEMAS

_MANIFEST = "catalogue.json"
_FORMAT = 1
_ROWS = 20_000  # that a row group has at least, before it is written

Manifest = dict[str, Any]


def read_manifest(folder: Path) -> Manifest:
    """What the catalogue consists of.

    Raises
    ------
    MissingFileError
        if the folder has no catalogue.
    DamagedFileError
        if its manifest cannot be read, or was written by a later version.
    """
    try:
        manifest: Manifest = json.loads((folder / _MANIFEST).read_text(encoding="utf-8"))
        if manifest["format"] == _FORMAT:
            return manifest
        reason = "was written by a later version of this package"
    except FileNotFoundError:
        raise MissingFileError(f"{folder}: there is no catalogue; veloxd index DIR makes one.") from None
    except (ValueError, KeyError, TypeError):
        reason = "cannot be read"
    raise DamagedFileError(f"{folder / _MANIFEST}: {reason}.")


def new_manifest() -> Manifest:
    """A catalogue of nothing."""
    return {"format": _FORMAT, "roots": [], "next": 0, "files": [], "channels": [], "items": []}


def write_manifest(folder: Path, manifest: Manifest) -> None:
    """Makes this the catalogue, and removes the parts that neither it nor the one before names."""
    try:
        before = read_manifest(folder)
    except MissingFileError:
        before = new_manifest()
    with replacement(str(folder / _MANIFEST), overwrite=True) as temporary:
        Path(temporary).write_text(json.dumps(manifest, indent=1, ensure_ascii=False) + "\n", encoding="utf-8")
    known = {name for table in SCHEMAS for name in (*manifest[table], *before[table])}
    for part in folder.glob("*.parquet"):
        if part.name not in known:
            with contextlib.suppress(OSError):  # somebody reads it, on Windows
                part.unlink()


@contextlib.contextmanager
def locked(folder: Path) -> Iterator[None]:
    """Keeps other updates of the catalogue out, which fail meanwhile. A process that dies leaves no lock."""
    folder.mkdir(parents=True, exist_ok=True)
    descriptor = os.open(folder / ".lock", os.O_RDWR | os.O_CREAT)
    try:
        _lock(descriptor, folder)
        yield
    finally:
        os.close(descriptor)


def _lock(descriptor: int, folder: Path) -> None:
    try:
        if os.name == "nt":
            import msvcrt

            msvcrt.locking(descriptor, msvcrt.LK_NBLCK, 1)  # type: ignore[attr-defined]
        else:
            import fcntl

            fcntl.flock(descriptor, fcntl.LOCK_EX | fcntl.LOCK_NB)
    except OSError:
        raise BlockingIOError(f"{folder}: the catalogue is being updated by another process.") from None


class Part:
    """A part of one table while it is written. Memory goes by a row group."""

    def __init__(self, folder: Path, table: str) -> None:
        self.name = f"{table}-{secrets.token_hex(8)}.parquet"
        self._schema = SCHEMAS[table]
        self._path = folder / self.name
        self._writer = pq.ParquetWriter(self._path, self._schema, compression="zstd")
        self._rows: list[dict[str, Any]] = []
        self.count = 0

    def add(self, rows: Iterable[dict[str, Any]]) -> None:
        """Adds rows in order."""
        self._rows.extend(rows)
        if len(self._rows) >= _ROWS:
            self._flush()

    def add_table(self, table: pa.Table) -> None:
        """Adds rows of another part."""
        self._flush()
        self._writer.write_table(table.cast(self._schema))
        self.count += table.num_rows

    def close(self) -> list[str]:
        """Ends the part. Its name if it has rows; else it is removed."""
        self._flush()
        self._writer.close()
        if self.count:
            return [self.name]
        self._path.unlink()
        return []

    def _flush(self) -> None:
        if self._rows:
            self._writer.write_table(pa.Table.from_pylist(self._rows, schema=self._schema))
            self.count += len(self._rows)
            self._rows = []
