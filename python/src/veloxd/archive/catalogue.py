"""Catalogues of files: what their headers hold, in tables that queries search."""

from __future__ import annotations

import os
from collections.abc import Iterable, Iterator, Sequence
from pathlib import Path
from typing import Any, overload

import duckdb
import pandas as pd

from .. import file as oxd
from . import _store, _update
from ._query import condition
from ._tables import SCHEMAS

__all__ = ["Catalogue", "Found", "index"]


def index(folder: str | os.PathLike[str], *roots: str | os.PathLike[str]) -> Catalogue:
    """Makes the catalogue in ``folder`` of all files below ``roots``, or brings it up to date.

    Headers are read of files that are new or changed since the last time, by size and time. What the catalogue was made
    of before stays part of it. The :attr:`Catalogue.report` of what is returned says what was done.

    Raises
    ------
    FileNotFoundError
        if a root does not exist.
    BlockingIOError
        if another process is updating the catalogue.
    LibraryError
        if the tool that reads headers is not found or too old.
    """
    report = _update.update(Path(folder), roots)
    return Catalogue(folder, report)


class Catalogue:
    """A catalogue as it is when this is made. An update by others does not change it, and a second one ends it.

    Its tables are ``files``, ``channels`` and ``items``, which have the column ``file``, a number, in common. Numbers
    of items are in units without prefixes.

    Attributes
    ----------
    folder : Path
        Where it is.
    report : Report or None
        What the update did that made it.
    """

    def __init__(self, folder: str | os.PathLike[str], report: _update.Report | None = None) -> None:
        self.folder = Path(folder)
        self.report = report
        self._manifest = _store.read_manifest(self.folder)
        self._connection = duckdb.connect(":memory:", config={"autoinstall_known_extensions": "false"})
        for table in SCHEMAS:
            self._connection.execute(f"create view {table} as {self._view(table)}")
        self._units: dict[str, set[str | None]] = {}

    def sql(self, statement: str, parameters: Sequence[Any] = ()) -> pd.DataFrame:
        """The result of a statement in DuckDB's SQL, with ``?`` for parameters."""
        return self._connection.execute(statement, list(parameters)).df()

    def find(self, query: str = "") -> Found:
        """The files that a query describes, sorted by path; all that can be read for an empty one.

        Raises
        ------
        QueryError
            with the place, if the query cannot be understood.
        """
        where = condition(query, self)
        readable = "" if "error" in where.sql else " and error is null"
        frame = self.sql(f"select * from files where {where.sql}{readable} order by path", where.values)
        return Found(frame)

    def units(self, name: str) -> set[str | None]:
        """The units without prefixes of the items of this name or path; ``None`` for texts. Empty if there are none."""
        if name not in self._units:
            rows = self._connection.execute(
                "select distinct unit from items where lower(name) = lower(?) or lower(path) = lower(?)", [name, name]
            ).fetchall()
            self._units[name] = {unit for (unit,) in rows}
        return self._units[name]

    def names(self) -> list[str]:
        """The names of all items, sorted."""
        return [name for (name,) in self._connection.execute("select distinct name from items order by 1").fetchall()]

    def __repr__(self) -> str:
        return f"<veloxd.archive.Catalogue {str(self.folder)!r}>"

    def _view(self, table: str) -> str:
        paths = [str(self.folder / name) for name in self._manifest[table]]
        if not paths:
            schema = SCHEMAS[table]
            columns = ", ".join(f'null::{_TYPES[str(field.type)]} as "{field.name}"' for field in schema)
            return f"select {columns} where false"
        listed = ", ".join("'" + path.replace("'", "''") + "'" for path in paths)
        living = "" if table == "files" else " where file in (select file from files)"
        return f"select * from read_parquet([{listed}]){living}"


_TYPES = {
    "int64": "bigint",
    "int32": "integer",
    "string": "varchar",
    "bool": "boolean",
    "double": "double",
    "timestamp[us]": "timestamp",
}


class Found(Sequence[oxd.File]):
    """Files that a query has found. Each one is opened when it is taken, and whoever takes it closes it.

    Attributes
    ----------
    frame : pandas.DataFrame
        A row for each of them, with the columns of the table ``files``.
    """

    def __init__(self, frame: pd.DataFrame) -> None:
        self.frame = frame

    @property
    def paths(self) -> list[str]:
        """Their paths."""
        return list(self.frame["path"])

    @overload
    def __getitem__(self, key: int) -> oxd.File: ...

    @overload
    def __getitem__(self, key: slice) -> Found: ...

    def __getitem__(self, key: int | slice) -> oxd.File | Found:
        if isinstance(key, slice):
            return Found(self.frame.iloc[key])
        return oxd.open(self.paths[key])

    def __len__(self) -> int:
        return len(self.frame)

    def __iter__(self) -> Iterator[oxd.File]:
        return map(oxd.open, self.paths)

    def __repr__(self) -> str:
        return f"<veloxd.archive.Found: {len(self)} files>"


def catalogue_paths(found: Found | Iterable[str | os.PathLike[str]]) -> list[str]:
    """The paths of files, whether a query has found them or they are given."""
    return found.paths if isinstance(found, Found) else [os.fspath(path) for path in found]
