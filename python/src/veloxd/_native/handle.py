"""Owns data sets of the library, so that none is reached by what belongs to another."""

from __future__ import annotations

import os
import pickle
import sys
import weakref
from collections import deque
from typing import TYPE_CHECKING, Any

from ..errors import ClosedError, DamagedFileError, Error, ForkError, ReadOnlyError
from . import blocks
from .block_declarations import VEL_BLOCK_NO_HEADER, VEL_BLOCK_OK
from .changes import Changes, Place
from .failure import failure
from .file_names import copy_to_read, file_name, label
from .library import LOCK, call, library, text
from .log import Capture

if TYPE_CHECKING:
    from .._part import Part

# Numbers of data sets that nothing refers to any longer, with the process that they are of. Finalizers run anywhere,
# even where the error text of a call is still to be read, so they leave the closing to whoever has the lock next.
_abandoned: deque[tuple[int, int]] = deque()

# Stands for this process: how many forks lie between it and the first one. The system's number costs a call of it.
_generation = 0


def _close_abandoned() -> None:
    while _abandoned:
        number, generation = _abandoned.popleft()
        if generation == _generation:
            library().CloseOxdFile(number)


def _abandon(number: int, generation: int) -> None:
    _abandoned.append((number, generation))
    if LOCK.acquire(blocking=False):
        try:
            _close_abandoned()
        finally:
            LOCK.release()


def _open(path: str, shown: str, salvage: bool) -> tuple[int, Error | None]:
    """Opens a file. With ``salvage``, a damaged one is opened as far as it can be read, and comes with its failure."""
    encoded = file_name(path)
    if encoded is None:
        with copy_to_read(path, shown) as copy:
            return _open(copy, shown, salvage)
    capture = Capture()
    try:
        with LOCK:
            _close_abandoned()
            with capture:
                result, number = blocks.open_file(encoded)
            if result == VEL_BLOCK_OK:
                return number, None
            failed = _failure(result, shown)
            if salvage and isinstance(failed, DamagedFileError):
                return number, failed
            library().CloseOxdFile(number)
            raise failed
    finally:
        capture.publish()


def _failure(result: int, path: str) -> Error:
    """What a result says but VEL_BLOCK_OK."""
    details = blocks.last_failure()
    if result == VEL_BLOCK_NO_HEADER:
        return DamagedFileError(f"{path}: the file has no header, so it is no .oxd file.", details)
    return failure(details, path)


class Handle:
    """One data set in the library, of a file that was opened or is to be made.

    It opens its file when it is first used, or at once if :meth:`open` is called; it never opens it twice. Its number
    is given out only while the data set is open and in the process that opened it. A data set that nothing refers to
    is closed. Every method may be called from any thread.

    ``name`` is the path of its file as the caller says it, for messages; ``path`` is the absolute one.
    """

    _number: int | None = None

    def __init__(self, path: str, writable: bool = False, salvage: bool = False) -> None:
        self.name_file(path)
        self.writable = writable
        self.may_replace = True
        self.changes = Changes()
        self.damage: Error | None = None
        self._parts: dict[Place, weakref.ref[Part]] = {}
        self._salvage = salvage
        self._generation = 0
        self._is_closed = False

    def open(self) -> None:
        """Opens the file; raises what `veloxd.open` does."""
        number, self.damage = _open(self.path, self.name, self._salvage)
        self._own(number)

    def create(self) -> None:
        """Makes an empty data set instead of opening a file."""
        self._own(call("CreateOxdFile", label(self.path)))
        self.changes.anything = True

    def name_file(self, path: str) -> None:
        """Makes ``path`` the file that the data set is of."""
        self.name = path
        self.path = path if not path or os.path.isabs(path) else os.path.join(os.getcwd(), path)

    def _own(self, number: int) -> None:
        self._number = number
        self._generation = _generation

    @property
    def number(self) -> int:
        """The number of the data set in the library, for calls while :data:`LOCK` is held."""
        if self._is_closed:
            raise ClosedError(f"{self.name or 'The file'}: the file is closed.")
        if self._number is None:
            self.open()
        elif self._generation != _generation:
            raise ForkError(f"{self.name or 'The file'}: opened by another process, so open it again in this one.")
        assert self._number is not None
        return self._number

    @property
    def is_closed(self) -> bool:
        return self._is_closed

    def close(self) -> None:
        """Drops the data set with all changes. Closing it again does nothing."""
        with LOCK:
            self._is_closed = True
            number, self._number = self._number, None
            if number is not None and self._generation == _generation:
                library().CloseOxdFile(number)

    def __del__(self) -> None:
        if self._number is not None and not sys.is_finalizing():
            _abandon(self._number, self._generation)

    def get(self, name: str, *arguments: Any) -> Any:
        """The result of a function of the library for this data set."""
        with LOCK:
            return call(name, self.number, *arguments)

    def text(self, name: str, *arguments: Any) -> str:
        """The text that a function of the library copies to a buffer."""
        with LOCK:
            return text(name, self.number, *arguments)

    def change(self, name: str, *arguments: Any) -> Any:
        """The result of a function of the library that changes this data set."""
        with LOCK:
            self.require_writable()
            result = call(name, self.number, *arguments)
            self.changes.anything = True
            return result

    def require_writable(self) -> None:
        if not self.writable:
            raise ReadOnlyError(f'{self.name}: opened for reading only; open it with mode "r+" to change it.')

    def add_part(self, part: Part, place: Place) -> None:
        """Makes an object the one that stands for a place."""
        self._parts[place] = weakref.ref(part)

    def part(self, place: Place) -> Part | None:
        """The object that stands for a place, if there is one."""
        known = self._parts.get(place)
        return None if known is None else known()

    def forget(self, place: Place) -> None:
        """Ends the objects that stand for a deleted group or channel, and for what is in it."""
        self.changes.forget(place)
        for known in [known for known in self._parts if known[: len(place)] == place]:
            part = self._parts.pop(known)()
            if part is not None:
                part._end()

    def __reduce__(self) -> tuple[Any, ...]:
        with LOCK:
            if self._is_closed or self._number is not None:
                self.number  # noqa: B018, raises what keeps it from being used
            if self.changes.anything:
                raise pickle.PicklingError(
                    "A file with changes that are not saved cannot be pickled, because a pickle holds only its path."
                )
            return Handle, (self.path, False, self._salvage)


def _begin_child() -> None:
    global _generation
    _generation += 1
    LOCK.release()


# A child gets the library as it is, so nobody may be in the middle of a call.
if hasattr(os, "register_at_fork"):
    os.register_at_fork(before=LOCK.acquire, after_in_parent=LOCK.release, after_in_child=_begin_child)
