"""What a batch has done, noted down file by file, so that a batch that was killed goes on where it was.

A line is appended when a file is done. What a kill leaves of a line that was not written to its end does not count.
"""

from __future__ import annotations

import json
import os
from pathlib import Path
from types import TracebackType
from typing import Any

from .._replacing import replacement
from ..errors import Error, ExistingFileError

_NAME = "journal.jsonl"
_RESULTS = "results.parquet"

Entry = dict[str, Any]


class Journal:
    """The journal of a folder. Its entries have ``path`` and either ``rows`` or ``error``, and count by path.

    Raises
    ------
    ExistingFileError
        if the folder is not empty and the batch does not resume.
    Error
        if the batch that it resumes was another one.
    """

    def __init__(self, folder: Path, work: str, resume: bool) -> None:
        self._folder = folder
        folder.mkdir(parents=True, exist_ok=True)
        path = folder / _NAME
        self.entries: dict[str, Entry] = {}
        if path.exists() and resume:
            whole = self._read(path, work)
            os.truncate(path, whole)
        elif any(folder.iterdir()):
            raise ExistingFileError(f"{folder}: the folder is not empty; --resume goes on with what began there.")
        remove_leftovers(folder)
        self._file = open(path, "ab")  # noqa: SIM115
        if not self._file.tell():
            self._write({"work": work})

    def add(self, entry: Entry) -> None:
        """Notes that a file is done. It outlives the process from then on."""
        self._write(entry)
        self.entries[entry["path"]] = entry

    def finish(self, paths: list[str]) -> list[Entry]:
        """The rows of all files in the order of ``paths``, which become the table of results."""
        rows = [row for path in paths for row in rows_of(self.entries[path])]
        remove_leftovers(self._folder)
        write_table(self._folder / _RESULTS, rows)
        return rows

    def __enter__(self) -> Journal:
        return self

    def __exit__(
        self, kind: type[BaseException] | None, value: BaseException | None, trace: TracebackType | None
    ) -> None:
        self._file.close()

    def _read(self, path: Path, work: str) -> int:
        """Reads all whole lines. How many bytes they are."""
        lines = path.read_bytes().split(b"\n")[:-1]
        entries = [json.loads(line) for line in lines]
        if entries and entries[0].get("work") != work:
            raise Error(f"{self._folder}: what began there is another batch: {entries[0].get('work')}.")
        self.entries = {entry["path"]: entry for entry in entries[1:]}
        return sum(len(line) + 1 for line in lines)

    def _write(self, entry: Entry) -> None:
        self._file.write(json.dumps(entry).encode() + b"\n")
        self._file.flush()


def rows_of(entry: Entry) -> list[Entry]:
    """The rows of one file in the table of results: one with the error if it failed."""
    if "error" in entry:
        return [{"path": entry["path"], "error": entry["error"]}]
    return [{"path": entry["path"], "error": None, **row} for row in entry["rows"] or [{}]]


def write_table(path: Path, rows: list[Entry]) -> None:
    """Writes rows as Parquet, in one step."""
    import pyarrow as pa
    import pyarrow.parquet as pq

    columns = list(dict.fromkeys(["path", "error", *(key for row in rows for key in row)]))
    table = pa.table({column: [row.get(column) for row in rows] for column in columns})
    with replacement(str(path), overwrite=True) as temporary:
        pq.write_table(table, temporary)


def remove_leftovers(folder: Path) -> None:
    """Removes what processes that were killed have left of outputs: no other files have such names."""
    for leftover in folder.rglob(".oxd-*.tmp"):
        leftover.unlink(missing_ok=True)
