"""Reads samples line by line, straight into the caller's array where that has room for whole lines."""

from __future__ import annotations

from collections.abc import Sequence
from dataclasses import dataclass
from typing import Any

import numpy as np
import numpy.typing as npt

from ._native import blocks
from ._native.library import LOCK
from ._part import Part
from ._selection import Selection
from .errors import DamagedFileError, Error

# What stands for a point that was never acquired among raw samples: a number that no sample can have.
RAW_MISSING = -(2**31)

OPERATORS = {"mean": 1, "line": 2, "derive": 3, "parabola": 4, "polynomial": 5}

_BUFFER = 1 << 17  # samples, of lines from which points are taken


@dataclass(frozen=True)
class Form:
    """In what form samples are read and written: raw, or as real values in the unit of the signal axis."""

    dtype: np.dtype[Any]
    missing: float
    point_writer: str

    @staticmethod
    def of(raw: bool) -> Form:
        return _RAW if raw else _REAL


_RAW = Form(np.dtype(np.int32), RAW_MISSING, "SetChannelData_PixelRaw")
_REAL = Form(np.dtype(np.float64), np.nan, "SetChannelData_PixelReal")


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
        _read_lines(part, points, selection.lines, code, out)
        return
    at_once = max(1, _BUFFER // max(points, 1))
    buffer = np.empty((min(at_once, len(selection.lines)), points), form.dtype)
    for start in range(0, len(selection.lines), at_once):
        lines = selection.lines[start : start + at_once]
        _read_lines(part, points, lines, code, buffer[: len(lines)])
        out[start : start + len(lines)] = buffer[: len(lines), selection.points]


def _takes_lines(selection: Selection, form: Form, out: npt.NDArray[Any]) -> bool:
    """Whether lines fit into ``out`` as they are: whole, contiguous, and none over another."""
    return (
        selection.is_whole_line
        and out.dtype == form.dtype
        and out.flags.aligned
        and (out.shape[1] <= 1 or out.strides[1] == out.itemsize)
        and (out.shape[0] <= 1 or abs(out.strides[0]) >= out.shape[1] * out.itemsize)
    )


def _read_lines(part: Part, points: int, lines: Sequence[int], code: int, rows: npt.NDArray[Any]) -> None:
    """Reads whole lines into rows, which are contiguous, whatever the distance between them."""
    with LOCK:
        number, place = part._handle.number, part._numbers()
        try:
            blocks.read(number, place, code, lines, rows)
        except Error:
            _require_readable(lines, blocks.acquired(number, place, lines), points)
            raise


def _require_readable(lines: Sequence[int], acquired: npt.NDArray[np.uint64], points: int) -> None:
    wrong = np.flatnonzero(acquired > points)
    if wrong.size:
        number = acquired[wrong[0]]
        raise DamagedFileError(
            f"Line {lines[wrong[0]]} cannot be read: it claims {number} of {points} points."
        ) from None


def valid(part: Part, lines: Sequence[int], points: int) -> npt.NDArray[np.bool_]:
    """Which points of the lines were acquired: shape (lines, points)."""
    with LOCK:
        acquired = blocks.acquired(part._handle.number, part._numbers(), lines)
    mask: npt.NDArray[np.bool_] = np.arange(points) < acquired[:, np.newaxis]
    return mask
