"""Reads samples line by line, straight into the caller's array where that has room for whole lines."""

from __future__ import annotations

from collections.abc import Sequence
from dataclasses import dataclass
from itertools import count
from typing import Any

import numpy as np
import numpy.typing as npt

from ._native.library import LOCK, begin, check, library
from ._native.repeated import call_for_each, positions
from ._part import Part
from ._selection import Selection
from .errors import DamagedFileError

# What stands for a point that was never acquired among raw samples: a number that no sample can have.
RAW_MISSING = -(2**31)

OPERATORS = {"mean": 1, "line": 2, "derive": 3, "parabola": 4, "polynomial": 5}

# No operator needs more samples than this; one that needs more than a line has gives nothing.
_MOST_NEEDED = 5

_MOST_AT_ONCE = 1024  # lines, between which other threads have their turn
_BUFFER = 1 << 17  # samples, of lines from which points are taken


@dataclass(frozen=True)
class Form:
    """In what form samples are read and written: raw, or as real values in the unit of the signal axis."""

    dtype: np.dtype[Any]
    missing: float
    reader: str
    writer: str
    point_writer: str

    @staticmethod
    def of(raw: bool) -> Form:
        return _RAW if raw else _REAL


def _form(dtype: type, missing: float, suffix: str) -> Form:
    names = [f"{verb}ChannelData_{what}{suffix}" for verb, what in (("Get", "Line"), ("Set", "Line"), ("Set", "Pixel"))]
    return Form(np.dtype(dtype), missing, *names)


_RAW = _form(np.int32, RAW_MISSING, "Raw")
_REAL = _form(np.float64, np.nan, "Real")


def operator_code(level: str | None) -> int:
    """The library's number of an operator, 0 for None. Raises ``ValueError`` for a name that is none."""
    if level is None:
        return 0
    if level not in OPERATORS:
        raise ValueError(f"There is no operator {level!r}; there are {', '.join(OPERATORS)}.")
    return OPERATORS[level]


def read(part: Part, points: int, selection: Selection, form: Form, code: int, out: npt.NDArray[Any]) -> None:
    """Reads a selection of a channel of ``points`` points per line into ``out``, of the selection's full shape."""
    if _takes_lines(selection, form, out):
        _read_lines(part, points, selection.lines, form, code, out)
        return
    at_once = max(1, _BUFFER // max(points, 1))
    buffer = np.empty((min(at_once, len(selection.lines)), points), form.dtype)
    for start in range(0, len(selection.lines), at_once):
        lines = selection.lines[start : start + at_once]
        _read_lines(part, points, lines, form, code, buffer[: len(lines)])
        out[start : start + len(lines)] = buffer[: len(lines), selection.points]


def _takes_lines(selection: Selection, form: Form, out: npt.NDArray[Any]) -> bool:
    return (
        selection.is_whole_line
        and out.dtype == form.dtype
        and out.flags.aligned
        and (out.shape[1] <= 1 or out.strides[1] == out.itemsize)
    )


def _read_lines(part: Part, points: int, lines: Sequence[int], form: Form, code: int, rows: npt.NDArray[Any]) -> None:
    """Reads whole lines into rows, which are contiguous, whatever the distance between them."""
    loaded = library()
    pitch = rows.strides[0]
    address = rows.ctypes.data
    needed = max(points, _MOST_NEEDED if code else 0)
    with LOCK:
        place = (part._handle.number, *part._numbers())
        begin(loaded)
        for start in range(0, len(lines), _MOST_AT_ONCE):
            some = lines[start : start + _MOST_AT_ONCE]
            arguments = positions(some)
            acquired = call_for_each("GetChannelData_PointsPerLine", *place, arguments)
            if min(acquired) < needed or max(acquired) > points:
                _mark_missing(some, acquired, points, rows[start:], needed if code else 0, form.missing)
            call_for_each(form.reader, *place, arguments, code, count(address + start * pitch, pitch))
        check(loaded)


def _mark_missing(
    lines: Sequence[int], acquired: list[int], points: int, rows: npt.NDArray[Any], needed: int, missing: float
) -> None:
    """Marks what is missing in lines that end early, or in all of a line that has fewer than ``needed`` samples."""
    for line, number, row in zip(lines, acquired, rows):
        if number > points:
            raise DamagedFileError(f"Line {line} cannot be read: it claims {number} of {points} points.")
        row[0 if number < needed else number :] = missing


def valid(part: Part, lines: Sequence[int], points: int) -> npt.NDArray[np.bool_]:
    """Which points of the lines were acquired: shape (lines, points)."""
    loaded = library()
    with LOCK:
        place = (part._handle.number, *part._numbers())
        begin(loaded)
        acquired = np.array(call_for_each("GetChannelData_PointsPerLine", *place, positions(lines)), dtype=np.int64)
        check(loaded)
    mask: npt.NDArray[np.bool_] = np.arange(points) < acquired[:, np.newaxis]
    return mask
