"""Tells which samples of a channel a key such as ``channel[10:20, 5]`` means."""

from __future__ import annotations

import operator
from collections.abc import Sequence
from typing import Any, NamedTuple, Union

import numpy as np
import numpy.typing as npt

# The points of a line: a slice with a positive step where possible, because NumPy reads it fastest.
Points = Union[slice, npt.NDArray[np.intp]]


class Selection(NamedTuple):
    """Lines and points of a channel, as NumPy and h5py understand a key.

    ``shape`` is that of the result; ``full_shape`` is the same with the axes that a number has removed.
    """

    lines: Sequence[int]
    points: Points
    is_whole_line: bool
    full_shape: tuple[int, int]
    shape: tuple[int, ...]


def select(key: Any, shape: tuple[int, int]) -> Selection:
    """What ``key`` selects of a channel of ``shape``, that is lines and points.

    An element of a key is an integer, a slice, or, for one of the axes, a sequence of integers or truth values.
    Negative integers count from the end. Raises ``IndexError`` for anything else.
    """
    if key is Ellipsis:
        return Selection(range(shape[0]), slice(0, shape[1], 1), True, shape, shape)
    line_key, point_key = _both(key)
    if not any(isinstance(one, slice) or _is_number(one) for one in (line_key, point_key)):
        raise IndexError("Only one axis of a channel can be indexed with an array.")
    lines = _positions(line_key, shape[0], "line")
    points = _positions(point_key, shape[1], "point")
    counts = (len(lines), len(points))
    kept = tuple(count for count, one in zip(counts, (line_key, point_key)) if not _is_number(one))
    is_whole = isinstance(points, range) and points == range(shape[1])
    return Selection(lines, _fast(points), is_whole, counts, kept)


def _both(key: Any) -> tuple[Any, Any]:
    parts = list(key) if isinstance(key, tuple) else [key]
    ellipses = [place for place, part in enumerate(parts) if part is Ellipsis]
    if len(ellipses) > 1 or len(parts) - len(ellipses) > 2:
        raise IndexError("A channel has two axes, lines and points.")
    missing = [slice(None)] * (2 - (len(parts) - len(ellipses)))
    place = ellipses[0] if ellipses else len(parts)
    parts[place : place + 1] = missing
    return parts[0], parts[1]


def _is_number(key: Any) -> bool:
    return hasattr(key, "__index__") and np.ndim(key) == 0


def _positions(key: Any, count: int, what: str) -> range | list[int]:
    if isinstance(key, slice):
        return range(*key.indices(count))
    if _is_number(key) and not isinstance(key, (bool, np.bool_)):
        position = _inside(operator.index(key), count, what)
        return range(position, position + 1)
    array = np.asarray(key)
    if array.ndim == 1 and array.size == 0:
        return []
    if array.ndim == 1 and array.dtype == bool and len(array) == count:
        return [int(position) for position in np.flatnonzero(array)]
    if array.ndim == 1 and array.dtype.kind in "iu":
        return [_inside(int(position), count, what) for position in array]
    raise IndexError(f"Not a key for the {what}s of a channel, of which there are {count}: {key!r}.")


def _inside(position: int, count: int, what: str) -> int:
    if not -count <= position < count:
        raise IndexError(f"{what.capitalize()} {position} is outside of a channel of {count} {what}s.")
    return position % count


def _fast(points: range | list[int]) -> Points:
    if isinstance(points, range) and points.step > 0:
        return slice(points.start, points.stop, points.step)
    return np.array(points, dtype=np.intp)
