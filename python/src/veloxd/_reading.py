"""Reads samples line by line, straight into the caller's array where that has room for whole lines."""

from __future__ import annotations

from dataclasses import dataclass
from typing import Any

import numpy as np
import numpy.typing as npt

from ._native.library import LOCK, begin, check, library
from ._part import Part
from ._selection import Selection
from .errors import DamagedFileError

# What stands for a point that was never acquired among raw samples: a number that no sample can have.
RAW_MISSING = -(2**31)

OPERATORS = {"mean": 1, "line": 2, "derive": 3, "parabola": 4, "polynomial": 5}

# No operator needs more samples than this; one that needs more than a line has gives nothing.
_MOST_NEEDED = 5


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
    row = np.empty((1, points), form.dtype)
    for line, target in zip(selection.lines, out):
        _read_lines(part, points, [line], form, code, row)
        target[...] = row[0, selection.points]


def _takes_lines(selection: Selection, form: Form, out: npt.NDArray[Any]) -> bool:
    return (
        selection.is_whole_line
        and out.dtype == form.dtype
        and out.flags.aligned
        and (out.shape[1] <= 1 or out.strides[1] == out.itemsize)
    )


def _read_lines(part: Part, points: int, lines: list[int], form: Form, code: int, rows: npt.NDArray[Any]) -> None:
    loaded = library()
    acquired = loaded.GetChannelData_PointsPerLine
    get = getattr(loaded, form.reader)
    pitch = rows.strides[0]
    address = rows.ctypes.data
    needed = max(points, _MOST_NEEDED if code else 0)
    with LOCK:
        place = (part._handle.number, *part._numbers())
        begin(loaded)
        for row, line in enumerate(lines):
            count = acquired(*place, line)
            if count > points:
                raise DamagedFileError(f"Line {line} cannot be read: it claims {count} of {points} points.")
            if count < needed:
                rows[row, 0 if code else count :] = form.missing
            get(*place, line, code, address)
            address += pitch
        check(loaded)


def valid(part: Part, lines: list[int], points: int) -> npt.NDArray[np.bool_]:
    """Which points of the lines were acquired: shape (lines, points)."""
    loaded = library()
    acquired = loaded.GetChannelData_PointsPerLine
    with LOCK:
        place = (part._handle.number, *part._numbers())
        begin(loaded)
        counts = np.array([acquired(*place, line) for line in lines], dtype=np.int64)
        check(loaded)
    mask: npt.NDArray[np.bool_] = np.arange(points) < counts[:, np.newaxis]
    return mask
