"""Makes files of xarray's objects."""

from __future__ import annotations

import math
import re
from typing import Any

import numpy as np
import xarray as xr

from .._positions import positions_of
from ..file import File, create
from ..group import Group
from .attributes import nest

# The positions along an axis may differ from even spacing by this part of the spacing: files keep 6 digits. Beside that
# they may differ by what their type rounds, but by no more than the other part, so that they are still told apart.
_TOLERANCE = 1e-3
_MOST_ROUNDED = 0.25

# The dimensions that reading gives a channel: that of its lines and that of its points, with the same number.
_LINES_AND_POINTS = re.compile(r"y(_\d+)? x(_\d+)?")


def from_xarray(labelled: xr.DataArray | xr.Dataset | xr.DataTree, *, bits: int = 32) -> File:
    """A file, which is not saved yet, with the variables as channels and the nodes of a tree as groups.

    Parameters
    ----------
    labelled
        Variables with one or two dimensions, lines and points in this order, except that ``y`` has the lines wherever
        it stands beside ``x``; their coordinates must be evenly spaced. ``units`` and ``long_name`` become units and
        names, and attributes such as ``Scan::Image size`` the information, in which an item with the name of a group
        gets ``_2``. Channels are in the order in which they were read from a file. Coordinates that belong to no
        dimension, and other attributes, are left out.
    bits
        In how many bits, 8, 16 or 32, samples are stored. 32 keep every sample exactly; with fewer,
        `SaveReport.inexact` counts those that lost some.

    Raises
    ------
    ValueError
        if a variable has more dimensions, gaps (NaN), coordinates that are not evenly spaced, or lines with positions
        of their own (``x_grid``). A line that ends early is a gap, too, because only the instrument makes such lines.

    Examples
    --------
    >>> import xarray, veloxd.xarray
    >>> height = xarray.DataArray([[0.0, 1.0], [2.0, 3.0]], dims=("y", "x"), name="Height", attrs={"units": "m"})
    >>> with veloxd.xarray.from_xarray(height) as file:
    ...     file.save("height.oxd")
    SaveReport(path='height.oxd', clipped=0, inexact=0)
    """
    file = create()
    try:
        for name, dataset in _datasets(labelled):
            if dataset.data_vars:
                _add_group(file, name, dataset, bits)
        file.info = nest(labelled.attrs)
    except BaseException:
        file.close()
        raise
    return file


def _datasets(labelled: xr.DataArray | xr.Dataset | xr.DataTree) -> list[tuple[str, xr.Dataset]]:
    if isinstance(labelled, xr.DataArray):
        return [("Data", labelled.to_dataset(name=labelled.name or "Data"))]
    if isinstance(labelled, xr.Dataset):
        return [("Data", labelled)]
    return [(node.path.strip("/") or "Data", node.to_dataset()) for node in labelled.subtree]


def _add_group(file: File, name: str, dataset: xr.Dataset, bits: int) -> None:
    group = file.create_group(str(dataset.attrs.get("group", name)), bits=bits, slots=len(dataset.data_vars))
    if "logical_id" in dataset.attrs:
        group.logical_id = int(dataset.attrs["logical_id"])
    for key, array in sorted(dataset.data_vars.items(), key=lambda item: item[1].attrs.get("channel", math.inf)):
        _add_channel(group, str(key), _in_order(array))


def _in_order(array: xr.DataArray) -> xr.DataArray:
    """The array with its lines ahead of its points, if their dimensions tell which is which.

    Arithmetic with a coordinate may have put the dimensions in another order.
    """
    match = _LINES_AND_POINTS.fullmatch(" ".join(map(str, reversed(array.dims))))
    return array.transpose() if match and match[1] == match[2] else array


def _add_channel(group: Group, key: str, array: xr.DataArray) -> None:
    if array.ndim not in (1, 2):
        raise ValueError(f"The variable {key!r} has {array.ndim} dimensions; a channel has lines and points.")
    values = np.asarray(array.values)
    if values.dtype.kind == "f" and not np.isfinite(values).all():
        raise ValueError(
            f"The variable {key!r} has gaps or infinite values; put numbers in their place, as by fillna(), "
            f"or leave out lines that were not acquired, as by dropna({str(array.dims[0])!r})."
        )
    _require_shared_positions(key, array)
    group.create_channel(
        str(array.attrs.get("long_name", key)),
        values,
        unit=str(array.attrs.get("units", "")),
        limits=_signal_limits(array, values),
        x=_axis(array, str(array.dims[-1])),
        y=_axis(array, str(array.dims[0])) if array.ndim == 2 else {"name": "Line"},
    )


def _require_shared_positions(key: str, array: xr.DataArray) -> None:
    own = positions_of(array)
    if own != array.dims[-1]:
        raise ValueError(
            f"The lines of the variable {key!r} have positions of their own, {own!r}, which would be lost; "
            f"to go without them, use drop_vars({own!r})."
        )


def _signal_limits(array: xr.DataArray, values: Any) -> tuple[float, float] | None:
    """The ends of the signal axis that the values came from, as long as all of them are on it."""
    minimum, span = (array.attrs.get(f"signal_{part}") for part in ("minimum", "range"))
    if minimum is None or not span or not values.size:
        return None
    low, high = sorted((float(minimum), float(minimum) + float(span)))
    is_on_axis = low <= np.nanmin(values) and np.nanmax(values) <= high
    return (float(minimum), float(minimum) + float(span)) if is_on_axis else None


def _axis(array: xr.DataArray, dim: str) -> dict[str, Any]:
    """The axis of a dimension: that which it was read from, if the coordinate is still the same."""
    count = array.sizes[dim]
    if dim not in array.coords:
        return {"name": dim, "minimum": 0.0, "range": float(max(count - 1, 0))}
    coordinate = array.coords[dim]
    if coordinate.dtype.kind not in "iuf":
        raise ValueError(f"The coordinate {dim!r} holds {coordinate.dtype}; the axes of a channel are real numbers.")
    positions = np.asarray(coordinate.values, dtype=float)
    first, last = (float(positions[0]), float(positions[-1])) if count else (0.0, 0.0)
    even = np.linspace(first, last, count)
    step = abs(last - first) / max(count - 1, 1)
    rounded = np.finfo(coordinate.dtype).eps * max(abs(first), abs(last)) if coordinate.dtype.kind == "f" else 0.0
    if not np.allclose(positions, even, rtol=0, atol=_TOLERANCE * step + min(rounded, _MOST_ROUNDED * step)):
        raise ValueError(f"The coordinate {dim!r} is not evenly spaced, as the axes of a channel are.")
    names = {"name": str(coordinate.attrs.get("long_name", dim)), "unit": str(coordinate.attrs.get("units", ""))}
    span = last - first if count > 1 else float(coordinate.attrs.get("axis_range", 0.0))
    return {**names, "minimum": first, "range": span}
