"""What xarray's arrays can do with the line operators and plots of this package."""

from __future__ import annotations

from typing import TYPE_CHECKING, Any

import numpy as np
import numpy.typing as npt
import xarray as xr

from .._reading import operator_code
from .._show.plot import Labelled, Picture, draw
from ..file import create

if TYPE_CHECKING:
    import matplotlib.axes


@xr.register_dataarray_accessor("oxd")  # type: ignore[no-untyped-call]
class OxdAccessor:
    """Line operators and plots of an array whose last dimension runs along the lines: ``array.oxd``."""

    def __init__(self, array: xr.DataArray) -> None:
        self._array = array

    def level(self, operator: str) -> xr.DataArray:
        """The array with a correction of each line, as `veloxd.Channel.level` gives it, but always centred on 0.

        The ends of the signal axis, which the attributes ``signal_minimum`` and ``signal_range`` tell, no longer hold
        and are left out. Arrays of dask stay lazy. Results agree with those of a fit in float64 within 1e-7 of the span
        of the line.

        Raises
        ------
        ValueError
            for an operator that does not exist, or, when it is computed, for infinite values, or gaps elsewhere than at
            the end of lines.
        """
        operator_code(operator)
        array = self._array
        along = array.dims[-1]
        whole = array.chunk({along: -1}) if array.chunks is not None else array
        levelled: xr.DataArray = xr.apply_ufunc(
            _level,
            whole,
            kwargs={"operator": operator},
            input_core_dims=[[along]],
            output_core_dims=[[along]],
            dask="parallelized",
            output_dtypes=[np.float64],
            keep_attrs=True,
        )
        for end in ("signal_minimum", "signal_range"):
            levelled.attrs.pop(end, None)
        return levelled

    def plot(self, ax: matplotlib.axes.Axes | None = None, **style: Any) -> matplotlib.axes.Axes:
        """Draws the array with matplotlib: an image true to scale, or curves, with labels in suitable units.

        One dimension gives a curve. Two give curves if there is one line, or if the units of their coordinates differ,
        otherwise an image. ``style`` goes to matplotlib's ``imshow`` or ``plot``.
        """
        array = self._array
        if array.ndim not in (1, 2):
            raise ValueError(f"An array of {array.ndim} dimensions cannot be drawn; select one or two.")
        rows = array if array.ndim == 2 else array.expand_dims("line")
        x, y = _coordinate(rows, 1), _coordinate(rows, 0)
        signal = Labelled(np.asarray(rows.values, dtype=float), *_names(array, str(array.name or "")))
        return draw(Picture(signal, x, y, "", len(rows) == 1 or x.unit != y.unit), ax, **style)


def _coordinate(array: xr.DataArray, axis: int) -> Labelled:
    dim = str(array.dims[axis])
    coordinate = array[dim]  # numbers from 0 if it has none
    return Labelled(np.asarray(coordinate.values, dtype=float), *_names(coordinate, dim))


def _names(array: xr.DataArray, name: str) -> tuple[str, str]:
    return str(array.attrs.get("long_name", name)), str(array.attrs.get("units", ""))


def _level(values: npt.NDArray[Any], operator: str) -> npt.NDArray[Any]:
    """The values with each line, along the last axis, corrected by the library."""
    if not values.size:
        return np.empty(values.shape)
    lines = np.asarray(values, dtype=float).reshape(-1, values.shape[-1])
    if not np.isfinite(lines).all():
        return np.stack([_level_ended(line, operator) for line in lines]).reshape(values.shape)
    # An offset and a factor of a line change none of its digits. The axis has room for what fits leave, so that no
    # sample counts as saturated.
    highest, lowest = (end(axis=1, keepdims=True) / 2 for end in (lines.max, lines.min))
    scales = np.where(highest > lowest, highest - lowest, 1.0)
    scaled = (lines - (highest + lowest)) / scales
    with create() as file:
        channel = file.create_group("Lines", slots=1).create_channel("Line", scaled, limits=(-4.0, 4.0))
        levelled = channel.level(operator) * scales
    return levelled.reshape(values.shape)


def _level_ended(line: npt.NDArray[Any], operator: str) -> npt.NDArray[Any]:
    """One line that ends before the array does, as lines do that were not acquired to their end."""
    count = int(np.flatnonzero(~np.isnan(line))[-1]) + 1 if not np.isnan(line).all() else 0
    if not np.isfinite(line[:count]).all():
        raise ValueError(
            "Lines with gaps or infinite values cannot be levelled: put numbers in their place, as by interpolate_na()."
        )
    levelled = np.full(line.shape, np.nan)
    levelled[:count] = _level(line[:count], operator)
    return levelled
