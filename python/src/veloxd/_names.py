"""What files and groups have in common: things found by their names and positions."""

from __future__ import annotations

import difflib
import operator
from collections.abc import Iterator, Mapping, Sequence
from typing import Generic, TypeVar

from ._native.library import LOCK
from .errors import NameNotFoundError

T = TypeVar("T")


class Named(Mapping[str, T], Generic[T]):
    """A mapping from names to what has them, which also takes positions: ``file["ForwardScan"]``, ``file[-1]``.

    Several may have the same name. The name gives the first of them then, and a position any.
    """

    __slots__ = ()

    _what = ""

    def _listed(self) -> tuple[list[int], list[str]]:
        """The numbers by which the library finds all of them, in order, and their names."""
        raise NotImplementedError

    def _with_number(self, number: int) -> T:
        raise NotImplementedError

    def _all(self) -> tuple[T, ...]:
        with LOCK:
            return tuple(map(self._with_number, self._listed()[0]))

    def __getitem__(self, key: str | int) -> T:
        if isinstance(key, str):
            return self._named(key)
        position = operator.index(key)
        with LOCK:
            numbers = self._listed()[0]
            if not -len(numbers) <= position < len(numbers):
                raise IndexError(f"There is no {self._what} {position}; there are {len(numbers)}.")
            return self._with_number(numbers[position])

    def _named(self, key: str) -> T:
        with LOCK:
            numbers, names = self._listed()
            if key in names:
                return self._with_number(numbers[names.index(key)])
        raise not_found(self._what, key, names)

    def __contains__(self, name: object) -> bool:
        return name in self._names()

    def __iter__(self) -> Iterator[str]:
        return iter(self._names())

    def __len__(self) -> int:
        """The number of different names."""
        return len(self._names())

    def _names(self) -> list[str]:
        return list(dict.fromkeys(self._listed()[1]))

    def _ipython_key_completions_(self) -> list[str]:
        return self._names()

    __hash__ = object.__hash__

    def __eq__(self, other: object) -> bool:
        return self is other


def not_found(what: str, name: str, names: Sequence[str]) -> NameNotFoundError:
    """The error for a name that is not there, with a similar one or those that there are."""
    similar = difflib.get_close_matches(name, names, 1)
    if similar:
        hint = f"did you mean {similar[0]!r}?"
    else:
        hint = f"there are {', '.join(map(repr, names))}." if names else "there are none."
    return NameNotFoundError(f"There is no {what} {name!r}; {hint}")
