"""Writes samples after all of them were checked: whole lines many at once, others point by point."""

from __future__ import annotations

from collections.abc import Iterator, Sequence
from typing import Any, Callable, NamedTuple

import numpy as np
import numpy.typing as npt

from ._native import blocks
from ._native.changes import Place
from ._native.library import LOCK, begin, check, library
from ._part import Part
from ._reading import RAW_MISSING, Form
from ._selection import Points

RAW_MINIMUM = -(2**29)
RAW_MAXIMUM = 2**29 - 1

_AT_ONCE = 1 << 17  # samples


class Row(NamedTuple):
    """What is to be written to some points of a line, in ascending order, or to all."""

    line: int
    points: npt.NDArray[np.intp]
    values: npt.NDArray[Any]
    is_whole: bool


def rows_of_block(
    lines: Sequence[int], points: Points, count: int, block: npt.NDArray[Any]
) -> Callable[[], Iterator[Row]]:
    """Rows for a block of values of shape (lines, selected points), in channels of ``count`` points per line."""
    positions = np.arange(count)[points]
    is_ascending = bool(np.all(np.diff(positions) > 0))
    order = slice(None) if is_ascending else np.argsort(positions, kind="stable")
    positions = positions[order]
    is_whole = np.array_equal(positions, np.arange(count))

    def rows() -> Iterator[Row]:
        for line, values in zip(lines, block):
            yield Row(line, positions, values[order], is_whole)

    return rows


def rows_of_mask(mask: npt.NDArray[np.bool_], values: npt.NDArray[Any]) -> Callable[[], Iterator[Row]]:
    """Rows for the points at which ``mask`` is true; ``values`` has one for each, in the order of lines."""

    def rows() -> Iterator[Row]:
        done = 0
        for line in map(int, np.flatnonzero(mask.any(axis=1))):
            points = np.flatnonzero(mask[line])
            yield Row(line, points, values[done : done + len(points)], len(points) == mask.shape[1])
            done += len(points)

    return rows


def write_lines(
    part: Part, lines: Sequence[int], block: npt.NDArray[Any], form: Form, limits: tuple[float, float]
) -> None:
    """Writes a block of whole lines without missing values. Values beyond ``limits`` are as in :func:`write`."""
    at_once = max(1, _AT_ONCE // max(block.shape[1], 1))
    with LOCK:
        handle, place = part._handle, part._numbers()
        handle.require_writable()
        for start in range(0, len(lines), at_once):
            some, rows = lines[start : start + at_once], block[start : start + at_once]
            handle.changes.anything = True
            blocks.write(handle.number, place, some, _as_stored(rows, form))
            handle.changes.assigned_lines(place, some, (rows < limits[0]) | (rows > limits[1]))


def has_missing(values: npt.NDArray[Any], form: Form) -> bool:
    return bool(_is_missing(values, form).any())


def _is_missing(values: npt.NDArray[Any], form: Form) -> npt.NDArray[np.bool_]:
    missing: npt.NDArray[np.bool_] = np.isnan(values) if form.dtype.kind == "f" else values == RAW_MISSING
    return missing


def _as_stored(values: npt.NDArray[Any], form: Form) -> npt.NDArray[Any]:
    """The values in the type that the library takes, one behind the other."""
    if form.dtype.kind == "i":
        return np.ascontiguousarray(np.clip(values, RAW_MINIMUM, RAW_MAXIMUM), form.dtype)
    return np.ascontiguousarray(values, form.dtype)


def write(part: Part, rows: Callable[[], Iterator[Row]], form: Form, limits: tuple[float, float]) -> None:
    """Writes rows of real values or raw samples; those beyond ``limits`` get the nearer one, and are counted.

    A missing value is left out where its point was never acquired, as long as no value stands behind it in its line.
    Anywhere else it raises ``ValueError``, before any sample was written.
    """
    loaded = library()
    with LOCK:
        part._handle.require_writable()
        place = (part._handle.number, *part._numbers())
        begin(loaded)
        for row in rows():
            _present(row, form, loaded.GetChannelData_PointsPerLine(*place, row.line))
        for row in rows():
            shown = _present(row, form, loaded.GetChannelData_PointsPerLine(*place, row.line))
            part._handle.changes.anything = True
            _write_row(place[0], place[1:], shown, form)
            is_clipped = (shown.values < limits[0]) | (shown.values > limits[1])
            part._handle.changes.assigned(part._place, shown.line, shown.points, is_clipped)
        check(loaded)


def _present(row: Row, form: Form, acquired: int) -> Row:
    """The row without missing values, which must stand for points that are not acquired and stay so."""
    missing = _is_missing(row.values, form)
    if not missing.any():
        return row
    kept = ~missing
    end = max(acquired, int(row.points[kept][-1]) + 1 if kept.any() else 0)
    wrong = row.points[missing & (row.points < end)]
    if len(wrong):
        raise ValueError(
            f"No value for point {wrong[0]} of line {row.line}: files hold no gaps, so put a number in its place."
        )
    return Row(row.line, row.points[kept], row.values[kept], False)


def _write_row(number: int, place: Place, row: Row, form: Form) -> None:
    values = _as_stored(row.values, form)
    if row.is_whole:
        blocks.write(number, place, (row.line,), values[np.newaxis])
        return
    put = getattr(library(), form.point_writer)
    for point, value in zip(row.points.tolist(), values.tolist()):
        put(number, *place, point, row.line, value)
