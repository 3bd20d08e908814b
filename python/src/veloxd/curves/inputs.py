"""Brings curves of any origin into one form: rows of signals, their positions, and what else is known of them."""

from __future__ import annotations

import sys
from collections.abc import Iterator, Mapping
from dataclasses import dataclass, field
from typing import TYPE_CHECKING, Any, Union

import numpy as np
import numpy.typing as npt

from .._native.library import LOCK
from ..channel import Channel
from ..information import Information, root_of
from ..quantity import Quantity
from .units import base, in_base

if TYPE_CHECKING:
    import xarray as xr

# What curves are given as.
CurvesLike = Union[Channel, "xr.DataArray", npt.ArrayLike]

# Positions may differ from even spacing by this part of the spacing: files keep 6 digits of the ends of axes.
_TOLERANCE = 1e-3

_MOST_AT_ONCE = 2**20  # samples


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
            raise ValueError(f"Positions in {self.axis_unit!r} are no lengths; say by x=... where the points are.")


def curves_of(curves: CurvesLike, x: npt.ArrayLike | None) -> Curves:
    """The curves in the one form, with the positions ``x`` if they are given.

    Raises
    ------
    TypeError
        if the values are no real numbers, or their positions are not known.
    ValueError
        if positions are not evenly spaced, or their number is not that of the points.
    """
    xarray = sys.modules.get("xarray")
    if isinstance(curves, Channel):
        made = _of_channel(curves)
    elif xarray is not None and isinstance(curves, xarray.DataArray):
        made = _of_labelled(curves)
    else:
        made = _of_array(curves, np.full((1, 2), np.nan))
        if x is None:
            raise TypeError("The positions of the points are not known: say them by x=...")
    if x is None:
        return made
    axes = _axes(np.asarray(x, dtype=float), made.shape, made.signal.shape[1])
    return Curves(made.signal, axes, made.shape, made.signal_unit, "", made.known, made.origin)


def _of_array(values: Any, axes: npt.NDArray[np.float64], **more: Any) -> Curves:
    array = np.ma.filled(values.astype(float), np.nan) if np.ma.isMaskedArray(values) else np.asarray(values)
    if array.dtype.kind not in "iuf" or array.ndim == 0:
        raise TypeError(f"Curves are arrays of real numbers, not of type {array.dtype} and {array.ndim} dimensions.")
    block = array.astype(np.float64, copy=False)
    rows = block.reshape(int(np.prod(block.shape[:-1])), block.shape[-1])
    return Curves(rows, axes, block.shape[:-1], **more)


def _of_channel(channel: Channel) -> Curves:
    with LOCK:
        lines, points = channel.shape
        axes, axis_unit = in_base(channel.x.of_lines(), channel.x.unit)
        axes[:, 1] = axes[:, 1] / (points - 1) if points > 1 else 1.0
        if lines and (axes == axes[0]).all():
            axes = axes[:1]
        signal, signal_unit = in_base(channel.values, channel.unit)
        known = {**_resolution(channel), **_calibration(root_of(channel._handle), signal_unit)}
    return _of_array(signal, axes, signal_unit=signal_unit, axis_unit=axis_unit, known=known)


def _resolution(channel: Channel) -> dict[str, Any]:
    """The smallest difference of signals, and the ends of the signal axis, as far as samples of their width reach."""
    width = 2.0 ** max(30 - _stored_bits(channel), 0)
    factor = base(channel.unit)[0]
    low, span = channel.signal.minimum * factor, channel.signal.range * factor
    high = low + span * ((2.0**30 - width) / (2.0**30 - 1))
    step = abs(span) * width / (2.0**30 - 1)
    return {"limits": _between(low, high, step), "signal_step": step}


def _between(low: float, high: float, step: float) -> tuple[float, float]:
    """Limits half a step within two ends, so that rounding takes no sample for one that is not at its end."""
    return min(low, high) + step / 2, max(low, high) - step / 2


def _stored_bits(channel: Channel) -> int:
    """In how many bits, 8, 16 or 32, samples are stored: the lowest of their 30 bits are 0 where they are fewer."""
    lines, points = channel.shape
    count = max(1, _MOST_AT_ONCE // max(points, 1))
    bits = 0
    for first in range(0, lines, count):
        bits |= int(np.bitwise_or.reduce(channel.read(slice(first, first + count), raw=True), axis=None))
        if bits % 2**14:
            return 32
    return 16 if bits % 2**22 else 8


def _calibration(information: Information, signal_unit: str) -> dict[str, Any]:
    """What the group ``Tool`` of the measurement information says of the cantilever."""
    tool = information.get("Tool")
    if not isinstance(tool, Information):
        return {}
    wanted = {
        "spring_constant": _number(tool.get("Spring constant"), "N/m"),
        "sensitivity": _number(tool.get("Deflection sensitivity"), f"m/{signal_unit}"),
    }
    return {option: value for option, value in wanted.items() if value is not None}


def _number(text: Any, unit: str) -> float | None:
    """The number in a text, if it is above 0 and in that unit, with or without prefixes."""
    try:
        quantity = Quantity.parse(text)
    except (TypeError, ValueError):
        return None
    value, name = in_base(np.array(quantity.value), quantity.unit)
    return float(value) if name == unit and value > 0 else None


def _of_labelled(array: xr.DataArray) -> Curves:
    """The last dimension runs along the points. Where lines have positions of their own, ``x_grid`` has them."""
    if array.ndim == 0:
        raise TypeError("Curves have a dimension along their points.")
    along = str(array.dims[-1])
    own = along.replace("x", "x_grid", 1)
    name = own if own in array.coords and array.coords[own].dims == array.dims else along
    if name not in array.coords:
        raise TypeError(f"The positions of the points are not known: there is no coordinate {along!r}.")
    positions = array.coords[name]
    x, axis_unit = in_base(np.asarray(positions.values, dtype=float), str(positions.attrs.get("units", "")))
    signal, signal_unit = in_base(np.asarray(array.values), str(array.attrs.get("units", "")))
    axes = _axes(x, signal.shape[:-1], signal.shape[-1])
    known = _limits(array)
    return _of_array(signal, axes, signal_unit=signal_unit, axis_unit=axis_unit, known=known, origin=array)


def _limits(array: xr.DataArray) -> dict[str, Any]:
    """The ends of the signal axis that the array came from."""
    attributes = array.attrs
    if not attributes.get("signal_range") or "signal_minimum" not in attributes:
        return {}
    factor = base(str(attributes.get("units", "")))[0]
    low, span = float(attributes["signal_minimum"]) * factor, float(attributes["signal_range"]) * factor
    return {"limits": _between(low, low + span, abs(span) / 2**30)}


def _axes(x: npt.NDArray[np.float64], shape: tuple[int, ...], points: int) -> npt.NDArray[np.float64]:
    """The start and the step of each row of positions. Both are NaN where a position is no number."""
    if x.shape not in ((points,), (*shape, points)):
        raise ValueError(f"Positions of shape {x.shape} do not fit curves of shape {(*shape, points)}.")
    rows = x.reshape(int(np.prod(x.shape[:-1])), points)
    if points < 2:
        return np.hstack([rows if points else np.zeros((len(rows), 1)), np.ones((len(rows), 1))])
    good = rows[np.isfinite(rows).all(axis=1)]
    start = good[:, :1]
    step = (good[:, -1:] - start) / (points - 1)
    if (np.abs(good - (start + step * np.arange(points))) > _TOLERANCE * np.abs(step)).any():
        raise ValueError("The positions of the points are not evenly spaced.")
    axes = np.full((len(rows), 2), np.nan)
    axes[np.isfinite(rows).all(axis=1)] = np.hstack([start, step])
    return axes
