"""Takes the text of a query apart into words, each with its place."""

from __future__ import annotations

import re
from typing import NamedTuple

from ..errors import Error


class QueryError(Error, ValueError):
    """A query that cannot be understood; the message shows the place.

    Attributes
    ----------
    column : int
        Where in the query, from 0.
    """

    def __init__(self, reason: str, query: str = "", column: int = 0) -> None:
        super().__init__(f"{reason}\n  {query}\n  {' ' * column}^")
        self.reason, self.query, self.column = reason, query, column

    def __reduce__(self) -> tuple[type[QueryError], tuple[str, str, int]]:
        return type(self), (self.reason, self.query, self.column)


class Word(NamedTuple):
    """A word of a query. Its kind is ``text``, ``name``, ``date``, ``number``, ``word``, ``sign`` or ``end``."""

    kind: str
    text: str
    column: int


_NUMBER = r"[+-]?(?:\d+\.?\d*|\.\d+)(?:[eE][+-]?\d+)?"
_UNIT = r"(?:[^\W\d_]|[°%‰])[^\W_]*(?:[/^·*]-?[\w°]+)*"
# What joins comparisons is no unit: 5 and x = 6.
_KINDS = re.compile(
    r"(?P<blank>\s+)"
    r"|(?P<text>'(?:[^']|'')*')"
    r'|(?P<name>"(?:[^"]|"")*")'
    r"|(?P<date>\d{4}-\d\d(?:-\d\d(?:T\d\d:\d\d(?::\d\d)?)?)?(?![\w-]))"
    rf"|(?P<number>{_NUMBER}(?:\s*(?!(?:and|or|not|in)\b){_UNIT})?)"
    r"|(?P<word>[^\W\d][\w/.]*)"
    r"|(?P<sign><=|>=|!=|<|>|=|~|\(|\)|,)",
    re.IGNORECASE,
)


def words(query: str) -> list[Word]:
    """All words of a query, and one that stands for its end."""
    found, column = [], 0
    while column < len(query):
        match = _KINDS.match(query, column)
        if match is None:
            reason = "This quotation has no end" if query[column] in "'\"" else "This means nothing here"
            raise QueryError(reason, query, column)
        kind = match.lastgroup or ""
        if kind != "blank":
            found.append(Word(kind, _unquoted(kind, match.group()), column))
        column = match.end()
    return [*found, Word("end", "the end", len(query))]


def _unquoted(kind: str, text: str) -> str:
    quote = {"text": "'", "name": '"'}.get(kind)
    return text[1:-1].replace(2 * quote, quote) if quote else text
