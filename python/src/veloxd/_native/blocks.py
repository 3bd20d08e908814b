"""Calls the library of blocks, which reads and writes many lines or names of a data set at once.

It calls the library of files, with its one error text, so :data:`LOCK` must be held for all that is here, and forgets a
failure of somebody else's call.
"""

from __future__ import annotations

import ctypes
import functools
from collections.abc import Sequence
from typing import Any, NamedTuple

import numpy as np
import numpy.typing as npt

from . import block_declarations as c
from .changes import Place
from .failure import failure
from .library import library, load


class Lines(NamedTuple):
    """Lines as the library takes them: from the first on, or those that an array has, whose address is given."""

    first: int
    address: int | None
    length: int
    array: npt.NDArray[np.uint64] | None  # which must live as long as its address is used


def lines_of(lines: Sequence[int]) -> Lines:
    count = len(lines)
    if isinstance(lines, range) and lines.step == 1:
        return Lines(lines.start, None, count, None)
    array = np.fromiter(lines, np.uint64, count)
    return Lines(0, array.ctypes.data, count, array)


@functools.cache
def _blocks() -> ctypes.CDLL:
    library()  # whose functions it must find
    return load("VELOxdBlocks", c.FUNCTIONS, c.DESCRIPTIONS)


def _require(result: int) -> None:
    if result != c.VEL_BLOCK_OK:
        assert result == c.VEL_BLOCK_FAILED, result
        raise failure(last_failure())


def last_failure() -> str:
    """The library's text about the call that failed last."""
    text: bytes = library().VELGetLastError()
    return text.decode("utf-8", "replace")


_FILE = ctypes.c_uint64()
_FILE_ADDRESS = ctypes.addressof(_FILE)


def open_file(path: bytes) -> tuple[int, int]:
    """Opens a file: one of the results of VELBlockOpen, and the number of the data set that there is afterwards."""
    result: int = _blocks().VELBlockOpen(path, _FILE_ADDRESS)
    return result, _FILE.value


class _NameList:
    """Arrays for names, which grow as needed and are used for one list after the other."""

    def __init__(self) -> None:
        self._make(64, 2048)

    def _make(self, room: int, size: int) -> None:
        self._numbers = (ctypes.c_uint64 * room)()
        self._texts = ctypes.create_string_buffer(size)
        texts = ctypes.cast(self._texts, ctypes.c_char_p)
        self._list = c.VELBlockNames(room, size, ctypes.addressof(self._numbers), texts)
        self._address = ctypes.addressof(self._list)

    def call(self, name: str, *place: int) -> tuple[list[int], list[str]]:
        """Numbers and names as the function ``name`` lists them."""
        function = getattr(_blocks(), name)
        listed = self._list
        while True:
            result = function(*place, self._address)
            if result != c.VEL_BLOCK_TOO_SMALL:
                break
            self._make(2 * max(listed.room, listed.count), 2 * max(listed.size, listed.bytes))
            listed = self._list
        _require(result)
        names = ctypes.string_at(self._texts, listed.bytes).decode("utf-8", "replace").split("\0")
        del names[-1]  # what stands behind the last zero byte
        return self._numbers[: listed.count], names


_NAMES = _NameList()


def groups(number: int) -> tuple[list[int], list[str]]:
    """Ids and names of all groups of a data set, in ascending order of their ids."""
    return _NAMES.call("VELBlockGroups", number)


def channels(number: int, group: int) -> tuple[list[int], list[str]]:
    """Slots and names of all channels of a group."""
    return _NAMES.call("VELBlockChannels", number, group)


_SHAPE = (ctypes.c_uint64 * 2)()
_SHAPE_ADDRESSES = (ctypes.addressof(_SHAPE), ctypes.addressof(_SHAPE) + 8)


def shape(number: int, place: Place) -> tuple[int, int]:
    """The number of lines of a channel and of points per line."""
    _require(_blocks().VELBlockShape(number, *place, *_SHAPE_ADDRESSES))
    lines, points = _SHAPE
    return lines, points


def acquired(number: int, place: Place, lines: Sequence[int]) -> npt.NDArray[np.uint64]:
    """How many points of each line were acquired, which in damaged files may be more than there are."""
    wanted = lines_of(lines)
    points = np.empty(wanted.length, np.uint64)
    _require(_blocks().VELBlockAcquired(number, *place, *wanted[:3], points.ctypes.data))
    return points


def point_axes(number: int, place: Place, lines: Sequence[int]) -> npt.NDArray[np.float64]:
    """The minimum and the range of the point axis of each line: shape (2, lines)."""
    wanted = lines_of(lines)
    ends = np.empty((2, wanted.length))
    _require(_blocks().VELBlockPointAxes(number, *place, *wanted[:3], ends[0].ctypes.data, ends[1].ctypes.data))
    return ends


def read(number: int, place: Place, code: int, lines: Sequence[int], rows: npt.NDArray[Any]) -> None:
    """Reads lines into rows of int32 or float64 that are contiguous, whatever the distance between them."""
    wanted = lines_of(lines)
    function = _function("Read", rows.dtype.kind)
    _require(function(number, *place, code, *wanted[:3], rows.ctypes.data, rows.strides[0] // rows.itemsize))


def write(number: int, place: Place, lines: Sequence[int], rows: npt.NDArray[Any]) -> None:
    """Writes whole lines from such rows."""
    wanted = lines_of(lines)
    function = _function("Write", rows.dtype.kind)
    _require(function(number, *place, *wanted[:3], rows.ctypes.data, rows.strides[0] // rows.itemsize))


@functools.cache
def _function(verb: str, kind: str) -> Any:
    return getattr(_blocks(), f"VELBlock{verb}{'Raw' if kind == 'i' else 'Real'}")
