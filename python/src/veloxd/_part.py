"""What groups and channels have in common."""

from __future__ import annotations

from typing import Any

from ._native.changes import Place
from ._native.handle import Handle
from ._native.library import LOCK, call, text
from .errors import DeletedError


class Part:
    """Something in a data set that the library finds by numbers, its place.

    There is one object for each place, as long as anything refers to it. When the group or the channel at that place
    is deleted, the object ends with it, so that it never stands for what takes the place later. Slots make assigning to
    a misspelt property an error, here and in the other classes of this package.
    """

    __slots__ = ("__weakref__", "_handle", "_has_ended", "_place")

    def __init__(self, handle: Handle, place: Place) -> None:
        self._handle = handle
        self._place = place
        self._has_ended = False
        handle.add_part(self, place)

    def _end(self) -> None:
        self._has_ended = True

    def _numbers(self) -> Place:
        if self._has_ended:
            raise DeletedError(f"This {type(self).__name__.lower()} was deleted.")
        return self._place

    def _get(self, name: str, *arguments: Any) -> Any:
        with LOCK:
            return call(name, self._handle.number, *self._numbers(), *arguments)

    def _text(self, name: str, *arguments: Any) -> str:
        with LOCK:
            return text(name, self._handle.number, *self._numbers(), *arguments)

    def _change(self, name: str, *arguments: Any) -> Any:
        with LOCK:
            return self._handle.change(name, *self._numbers(), *arguments)
