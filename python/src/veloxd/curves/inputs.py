"""Brings curves of any origin into one form: rows of signals, their positions, and what else is known of them."""

from __future__ import annotations

import sys
from collections.abc import Iterator, Mapping
from dataclasses import dataclass, field, replace
from typing import TYPE_CHECKING, Any, Union

import numpy as np
import numpy.typing as npt

from .._calibration import ATTRIBUTES, calibration
from .._native.library import LOCK
from .._positions import positions_of
from .._resolution import signal_step
from ..channel import Channel
from ..information import root_of
from ..quantity import Quantity
from .units import base, in_base

if TYPE_CHECKING:
    import xarray as xr
    from typing_extensions import TypeGuard

# What curves are given as.
CurvesLike = Union[Channel, "xr.DataArray", npt.ArrayLike]

# Positions may differ from even spacing by this part of the spacing: files keep 6 digits of the ends of axes.
_TOLERANCE = 1e-3

_LARGEST_SAMPLES = 2.0**30  # how many values a sample has at most


@dataclass(frozen=True)
class Curves:
    """Curves, whatever they came from.

    ``signal`` has the shape (rows, points), ``axes`` the start and the step of the positions of each row, or those of
    all in one row. ``shape`` is that of the results: () for a single curve. ``known`` are options that the origin
    tells. The units, which have no prefixes, are empty where they are not known.
    """

    signal: npt.NDArray[np.float64]
    axes: npt.NDArray[np.float64]
    shape: tuple[int, ...]
    signal_unit: str = ""
    axis_unit: str = ""
    known: dict[str, Any] = field(default_factory=dict)
    origin: xr.DataArray | None = None

    def runs(self) -> Iterator[tuple[slice, float, float]]:
        """Rows that follow each other and share their positions, with the start and the step of these."""
        if not len(self.signal):
            return
        changes = np.flatnonzero((self.axes[1:] != self.axes[:-1]).any(axis=1)) + 1
        ends = [0, *changes.tolist(), len(self.signal)]
        for first, last in zip(ends, ends[1:]):
            start, step = self.axes[min(first, len(self.axes) - 1)]
            yield slice(first, last), float(start), float(step)

    def positions(self, row: int) -> npt.NDArray[np.float64]:
        """The positions of the points of a row."""
        start, step = self.axes[min(row, len(self.axes) - 1)]
        positions: npt.NDArray[np.float64] = start + step * np.arange(self.signal.shape[1])
        return positions

    def options(self, given: Mapping[str, Any]) -> dict[str, Any]:
        """All options that are known: those that are given take the place of those that the origin tells."""
        options = {**self.known, **{name: value for name, value in given.items() if value is not None}}
        if self.signal_unit == "m":
            options.setdefault("sensitivity", 1.0)
        elif self.signal_unit == "N" and options.get("spring_constant"):
            options.setdefault("sensitivity", 1 / options["spring_constant"])
        return options

    def require_metres(self) -> None:
        """Raises ``ValueError`` if the positions are known to be no lengths."""
        if self.axis_unit not in ("", "m"):
            raise ValueError(f"Positions in {self.axis_unit!r} are no lengths; pass those of the points as x=...")


def curves_of(curves: CurvesLike, x: npt.ArrayLike | None) -> Curves:
    """The curves in the one form, with the positions ``x`` if they are given.

    Raises
    ------
    TypeError
        if the values are no real numbers, or their positions are not known.
    ValueError
        if positions are not evenly spaced, or their number is not that of the points.
    """
    if isinstance(curves, Channel):
        made = _of_channel(curves)
    elif _is_labelled(curves):
        made = _of_labelled(curves, x is None)
    else:
        made = _of_array(curves, np.full((1, 2), np.nan))
        if x is None:
            raise TypeError("The positions of the points are not known: pass them as x=...")
    if x is None:
        return made
    axes, axis_unit = _axes(x, made.shape, made.signal.shape[1])
    return replace(made, axes=axes, axis_unit=axis_unit)


def _is_labelled(values: Any) -> TypeGuard[xr.DataArray]:
    xarray = sys.modules.get("xarray")
    return xarray is not None and isinstance(values, xarray.DataArray)


def _of_array(values: Any, axes: npt.NDArray[np.float64], **more: Any) -> Curves:
    array = _unmasked(values)
    if array.dtype.kind not in "iuf" or array.ndim == 0:
        raise TypeError(f"Curves are arrays of real numbers, not of type {array.dtype} and {array.ndim} dimensions.")
    block = array.astype(np.float64, copy=False)
    rows = block.reshape(int(np.prod(block.shape[:-1])), block.shape[-1])
    return Curves(rows, axes, block.shape[:-1], **more)


def _unmasked(values: Any) -> npt.NDArray[Any]:
    """The values as an array, with NaN for those that are masked."""
    return np.ma.filled(values.astype(float), np.nan) if np.ma.isMaskedArray(values) else np.asarray(values)


def _of_channel(channel: Channel) -> Curves:
    with LOCK:
        lines, points = channel.shape
        axes, axis_unit = in_base(channel.x.of_lines(), channel.x.unit)
        axes[:, 1] = axes[:, 1] / (points - 1) if points > 1 else 1.0
        if lines and (axes == axes[0]).all():
            axes = axes[:1]
        signal, signal_unit = in_base(channel.values, channel.unit)
        known = {
            **_resolution(channel.signal.minimum, channel.signal.range, signal_step(channel), channel.unit),
            **_calibration(calibration(root_of(channel._handle)), signal_unit),
        }
    return _of_array(signal, axes, signal_unit=signal_unit, axis_unit=axis_unit, known=known)


def _resolution(minimum: float, span: float, step: float, unit: str) -> dict[str, Any]:
    """The smallest difference of signals, and the ends of the signal axis, as far as samples of their width reach."""
    factor = base(unit)[0]
    low, span, step = minimum * factor, span * factor, step * factor
    high = low + span * (_LARGEST_SAMPLES / (_LARGEST_SAMPLES - 1)) - np.copysign(step, span)
    return {"limits": _between(low, high, step), "signal_step": step}


def _between(low: float, high: float, step: float) -> tuple[float, float]:
    """Limits half a step within two ends, so that rounding takes no sample for one that is not at its end."""
    return min(low, high) + step / 2, max(low, high) - step / 2


def _calibration(texts: Mapping[str, Any], signal_unit: str) -> dict[str, Any]:
    """The options that texts such as "0.2 N/m" tell of the cantilever."""
    units = {"spring_constant": "N/m", "sensitivity": f"m/{signal_unit}"}
    wanted = {option: _number(text, units[option]) for option, text in texts.items()}
    return {option: value for option, value in wanted.items() if value is not None}


def _number(text: Any, unit: str) -> float | None:
    """The number in a text, if it is above 0 and in that unit, with or without prefixes."""
    try:
        quantity = Quantity.parse(text)
    except (TypeError, ValueError):
        return None
    value, name = in_base(np.array(quantity.value), quantity.unit)
    return float(value) if name == unit and value > 0 else None


def _of_labelled(array: xr.DataArray, has_positions: bool) -> Curves:
    """The last dimension runs along the points. The positions are left open if they are not wanted of the array."""
    if array.ndim == 0:
        raise TypeError("Curves have a dimension along their points.")
    axes, axis_unit = _axes_of_labelled(array) if has_positions else (np.full((1, 2), np.nan), "")
    signal, signal_unit = in_base(np.asarray(array.values), str(array.attrs.get("units", "")))
    texts = {option: array.attrs[name] for option, name in ATTRIBUTES.items() if name in array.attrs}
    known = {**_resolution_of_labelled(array, signal), **_calibration(texts, signal_unit)}
    return _of_array(signal, axes, signal_unit=signal_unit, axis_unit=axis_unit, known=known, origin=array)


def _resolution_of_labelled(array: xr.DataArray, signal: npt.NDArray[Any]) -> dict[str, Any]:
    """What the array knows of the signal axis that it came from, unless signals beyond it show that it was changed."""
    attributes = array.attrs
    unit = str(attributes.get("units", ""))
    if not attributes.get("signal_range") or "signal_minimum" not in attributes or signal.dtype.kind not in "iuf":
        return {"signal_step": float(attributes["signal_step"]) * base(unit)[0]} if "signal_step" in attributes else {}
    minimum, span = float(attributes["signal_minimum"]), float(attributes["signal_range"])
    step = float(attributes.get("signal_step", abs(span) / (_LARGEST_SAMPLES - 1)))
    known = _resolution(minimum, span, step, unit)
    (low, high), step = known["limits"], known["signal_step"]
    is_outside = ((signal < low - step) | (signal > high + step)).any()
    return {} if is_outside else known


def _axes_of_labelled(array: xr.DataArray) -> tuple[npt.NDArray[np.float64], str]:
    """The axes of all rows. Where lines have positions of their own, ``x_grid`` has them, if need be for fewer rows."""
    name = positions_of(array)
    if name not in array.coords:
        raise TypeError(f"The positions of the points are not known: there is no coordinate {name!r}.")
    positions = array.coords[name]
    positions = positions.transpose(*(dim for dim in array.dims if dim in positions.dims))
    axes, unit = _axes(positions, positions.shape[:-1], array.shape[-1])
    if positions.ndim == 1:
        return axes, unit
    index = tuple(slice(None) if dim in positions.dims else np.newaxis for dim in array.dims[:-1])
    lines = axes.reshape(*positions.shape[:-1], 2)[index]
    return np.broadcast_to(lines, (*array.shape[:-1], 2)).reshape(-1, 2), unit


def _axes(x: Any, shape: tuple[int, ...], points: int) -> tuple[npt.NDArray[np.float64], str]:
    """The start and the step of each row of positions, and their unit. Both are NaN where a position is no number."""
    given = _unmasked(x)
    if given.shape not in ((points,), (*shape, points)):
        raise ValueError(f"Positions of shape {given.shape} do not fit curves of shape {(*shape, points)}.")
    rounding = float(np.finfo(given.dtype).eps) if given.dtype.kind == "f" else 0.0
    values, unit = in_base(given.astype(float), str(x.attrs.get("units", "")) if _is_labelled(x) else "")
    rows = values.reshape(int(np.prod(given.shape[:-1])), points)
    if points < 2:
        return np.hstack([rows if points else np.zeros((len(rows), 1)), np.ones((len(rows), 1))]), unit
    is_known = np.isfinite(rows).all(axis=1)
    axes = np.full((len(rows), 2), np.nan)
    axes[is_known] = _evenly_spaced(rows[is_known], rounding)
    return axes, unit


def _evenly_spaced(rows: npt.NDArray[np.float64], rounding: float) -> npt.NDArray[np.float64]:
    """The start and the step of each row. ``rounding`` is the relative error of each position."""
    start = rows[:, :1]
    step = (rows[:, -1:] - start) / (rows.shape[1] - 1)
    tolerance = _TOLERANCE * np.abs(step) + rounding * np.abs(rows).max(axis=1, keepdims=True, initial=0)
    if (np.abs(rows - (start + step * np.arange(rows.shape[1]))) > tolerance).any():
        raise ValueError("The positions of the points are not evenly spaced.")
    return np.hstack([start, step])
