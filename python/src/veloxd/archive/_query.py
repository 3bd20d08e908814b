"""The language of queries: comparisons with ``and``, ``or``, ``not`` and parentheses.

A query becomes the condition of an SQL statement on the table of files, with its values as parameters::

    Setpoint < 10 nN and channel = 'Topography' and date > 2026-05

A name is that of a property of a file or of a channel, else that of an item of information: its last name or its path.
"""

from __future__ import annotations

import datetime
import difflib
from collections.abc import Callable
from typing import Any, NamedTuple, Protocol

from ._tables import quantity_in_base
from ._words import QueryError, Word, words


class Known(Protocol):
    """What a catalogue knows of items."""

    def units(self, name: str) -> set[str | None]:
        """The units of the items of this name or path; null for texts. Empty if there is no such item."""

    def names(self) -> list[str]:
        """The names of all items."""


class Field(NamedTuple):
    """A property: its column, its table, and what it is compared with."""

    column: str
    kind: str  # text, number, bytes or date, or the unit of a length column
    table: str = "files"


_FIELDS = {
    "path": Field("path", "text"),
    "id": Field("id", "text"),
    "error": Field("error", "text"),
    "date": Field("modified", "date"),
    "size": Field("size", "number"),
    "version": Field("version", "number"),
    "errors": Field("errors", "number"),
    "warnings": Field("warnings", "number"),
    "notes": Field("notes", "number"),
    "channel": Field("channel", "text", "channels"),
    "group": Field('"group"', "text", "channels"),
    "unit": Field("signal_unit", "text", "channels"),
    "points": Field("points", "number", "channels"),
    "lines": Field("lines", "number", "channels"),
    "bits": Field("bits", "number", "channels"),
    "width": Field("x_range", "x_unit", "channels"),
    "height": Field("y_range", "y_unit", "channels"),
}
_COMPARISONS = ("<", "<=", ">", ">=", "=", "!=", "~")
_FORMATS = {7: "%Y-%m", 10: "%Y-%m-%d", 16: "%Y-%m-%dT%H:%M", 19: "%Y-%m-%dT%H:%M:%S"}


class Condition(NamedTuple):
    """A condition in SQL, with the values of its parameters."""

    sql: str
    values: list[Any]


def condition(query: str, known: Known) -> Condition:
    """What a query means; an empty one means all files.

    Raises
    ------
    QueryError
        with the place, if it cannot be understood, or compares what cannot be compared.
    """
    if not query.strip():
        return Condition("true", [])
    return _Parser(query, known).parse()


class _Parser:
    def __init__(self, query: str, known: Known) -> None:
        self._query = query
        self._known = known
        self._words = words(query)
        self._next = 0
        self._depth = 0

    def parse(self) -> Condition:
        found = self._either()
        if self._word.kind != "end":
            raise self._fault(self._word, f"Expected and, or, or the end, not {self._word.text!r}")
        return found

    @property
    def _word(self) -> Word:
        return self._words[self._next]

    def _take(self) -> Word:
        self._next += 1
        return self._words[self._next - 1]

    def _takes(self, *texts: str) -> bool:
        is_so = self._word.kind in ("word", "sign") and self._word.text.lower() in texts
        self._next += is_so
        return is_so

    def _fault(self, word: Word, reason: str) -> QueryError:
        return QueryError(reason, self._query, word.column)

    def _joined(self, joint: str, part: Callable[[], Condition]) -> Condition:
        found = [part()]
        while self._takes(joint):
            found.append(part())
        sql = f" {joint} ".join(one.sql for one in found)
        return Condition(f"({sql})" if len(found) > 1 else sql, [value for one in found for value in one.values])

    def _either(self) -> Condition:
        return self._joined("or", self._both)

    def _both(self) -> Condition:
        return self._joined("and", self._one)

    def _one(self) -> Condition:
        self._depth += 1
        if self._depth > 50:
            raise self._fault(self._word, "This is nested too deeply")
        try:
            if self._takes("not"):
                inner = self._one()
                return Condition(f"(not {inner.sql})", inner.values)
            if self._takes("("):
                inner = self._either()
                if not self._takes(")"):
                    raise self._fault(self._word, "Expected )")
                return inner
            return self._comparison()
        finally:
            self._depth -= 1

    def _comparison(self) -> Condition:
        name = self._take()
        if name.kind not in ("word", "name"):
            raise self._fault(name, f"Expected a name, not {name.text!r}")
        field = _FIELDS.get(name.text.lower()) if name.kind == "word" else None
        if not field and not self._known.units(name.text):
            raise self._fault(name, f"No item is named {name.text!r}{self._suggestion(name.text)}")
        if self._takes("in"):
            return self._in_list(name, field)
        sign = self._take()
        if sign.text not in _COMPARISONS:
            raise self._fault(sign, f"Expected one of {' '.join(_COMPARISONS)} in, not {sign.text!r}")
        return self._compared(name, field, sign, self._take())

    def _in_list(self, name: Word, field: Field | None) -> Condition:
        if not self._takes("("):
            raise self._fault(self._word, "Expected (")
        equal = Word("sign", "=", self._word.column)
        found = [self._compared(name, field, equal, self._take())]
        while self._takes(","):
            found.append(self._compared(name, field, equal, self._take()))
        if not self._takes(")"):
            raise self._fault(self._word, "Expected , or )")
        return Condition(f"({' or '.join(one.sql for one in found)})", [value for one in found for value in one.values])

    def _compared(self, name: Word, field: Field | None, sign: Word, value: Word) -> Condition:
        if value.kind not in ("text", "number", "date"):
            raise self._fault(value, "Expected a number, a text in single quotes or a date")
        if sign.text == "~" and value.kind != "text":
            raise self._fault(value, "~ looks for a text in single quotes")
        if field is None:
            return self._item(name, sign, value)
        if field.kind == "date":
            found = self._date(field.column, sign, value)
        elif field.kind == "text":
            found = self._text(field.column, sign, value)
        else:
            found = self._number(field, sign, value)
        if field.table == "files":
            return Condition(f"coalesce({found.sql}, false)", found.values)
        return _exists(field.table, found)

    def _date(self, column: str, sign: Word, value: Word) -> Condition:
        if value.kind != "date":
            raise self._fault(value, "Expected a date such as 2026-05 or 2026-05-31")
        try:
            first = datetime.datetime.strptime(value.text, _FORMATS[len(value.text)])
        except ValueError:
            raise self._fault(value, "There is no such date") from None
        if sign.text not in ("=", "!="):
            return Condition(f"{column} {sign.text} ?", [first])
        within = Condition(f"({column} >= ? and {column} < ?)", [first, _end(first, len(value.text))])
        return within if sign.text == "=" else Condition(f"not {within.sql}", within.values)

    def _text(self, column: str, sign: Word, value: Word) -> Condition:
        if value.kind != "text":
            raise self._fault(value, "Expected a text in single quotes")
        if sign.text == "~":
            return Condition(f"contains(lower({column}), lower(?))", [value.text])
        return Condition(f"{column} {sign.text} ?", [value.text])

    def _number(self, field: Field, sign: Word, value: Word) -> Condition:
        quantity = quantity_in_base(value.text) if value.kind == "number" else None
        if quantity is None:
            raise self._fault(value, "Expected a number")
        if field.kind == "number":
            if quantity.unit:
                raise self._fault(value, f"{field.column} has no unit")
            return Condition(f"{field.column} {sign.text} ?", [quantity.value])
        return Condition(f"({field.kind} = ? and {field.column} {sign.text} ?)", [quantity.unit, quantity.value])

    def _item(self, name: Word, sign: Word, value: Word) -> Condition:
        where = "(lower(name) = lower(?) or lower(path) = lower(?))"
        names = [name.text, name.text]
        quantity = quantity_in_base(value.text) if value.kind == "number" else None
        if quantity is None:
            found = self._text("value", sign, Word("text", value.text, value.column))
            return _exists("items", Condition(f"({where} and {found.sql})", names + found.values))
        units = self._known.units(name.text) - {None}
        if quantity.unit not in units:
            raise self._fault(value, self._unit_fault(name.text, sorted(map(str, units)), quantity.unit))
        sql = f"({where} and unit = ? and number {sign.text} ?)"
        return _exists("items", Condition(sql, [*names, quantity.unit, quantity.value]))

    @staticmethod
    def _unit_fault(name: str, units: list[str], given: str) -> str:
        if not units:
            return f"{name} is a text: write it in single quotes"
        has = " or ".join(f"the unit {unit}" if unit else "no unit" for unit in units)
        return f"{name} has {has}, not {given}" if given else f"{name} has {has}: give it with the number"

    def _suggestion(self, name: str) -> str:
        near = difflib.get_close_matches(name, [*_FIELDS, *self._known.names()], 1)
        return f", did you mean {near[0]}?" if near else ""


def _end(first: datetime.datetime, length: int) -> datetime.datetime:
    """The first moment behind a month, a day, a minute or a second."""
    if length == 7:
        return first.replace(year=first.year + first.month // 12, month=first.month % 12 + 1)
    return first + datetime.timedelta(**{{10: "days", 16: "minutes", 19: "seconds"}[length]: 1})


def _exists(table: str, found: Condition) -> Condition:
    return Condition(f"file in (select file from {table} where {found.sql})", found.values)
