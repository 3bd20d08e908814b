"""Adds channels to groups."""

from __future__ import annotations

import math
import operator
from dataclasses import dataclass
from typing import TYPE_CHECKING, Any

import numpy as np
import numpy.typing as npt

from ._native.library import encode, encode_name
from ._reading import Form
from ._values import as_numbers
from .axis import Axis, AxisLike, as_stored
from .errors import Error

if TYPE_CHECKING:
    from .channel import Channel
    from .group import Group


@dataclass(frozen=True)
class Wanted:
    """A channel that is to be made, whose properties were checked."""

    shape: tuple[int, int]
    values: npt.NDArray[Any] | None
    signal: dict[str, Any]
    x: dict[str, Any]
    y: dict[str, Any]

    @staticmethod
    def of(
        name: str,
        values: npt.ArrayLike | None,
        shape: tuple[int, int] | None,
        unit: str,
        limits: tuple[float, float] | None,
        x: AxisLike | None,
        y: AxisLike | None,
    ) -> Wanted:
        if (values is None) == (shape is None):
            raise ValueError("A channel needs either values or a shape.")
        encode_name(name, "The name of a channel")
        encode(unit, "The unit of a channel")
        block = None if values is None else _block(values)
        low, high = limits or _limits(block)
        signal = {"name": name, "unit": unit, "minimum": low, "range": high - low}
        size = block.shape if block is not None else tuple(map(operator.index, shape or ()))
        if len(size) != 2 or min(size) < 0:
            raise ValueError(f"The shape of a channel is a number of lines and one of points, not {shape}.")
        return Wanted((size[0], size[1]), block, signal, _properties(x, "X", size[1]), _properties(y, "Y", size[0]))

    def fill(self, channel: Channel) -> None:
        """Makes the channel in its empty slot."""
        channel._change("SetChannelXYDimension", self.shape[1], self.shape[0])
        for axis, properties in ((channel.signal, self.signal), (channel.x, self.x), (channel.y, self.y)):
            axis.update(**properties)
        if self.values is not None and self.values.size:
            channel.write(self.values)


def _properties(axis: AxisLike | None, name: str, count: int) -> dict[str, Any]:
    if axis is None:
        return {"name": name, "minimum": 0.0, "range": float(max(count - 1, 0))}
    return {"name": name, **(axis.as_dict() if isinstance(axis, Axis) else axis)}


def _block(values: npt.ArrayLike) -> npt.NDArray[Any]:
    try:
        block = np.atleast_2d(as_numbers(values, Form.of(raw=False)))
    except TypeError as wrong:
        raise ValueError(str(wrong)) from None
    if block.ndim != 2:
        raise ValueError(f"A channel holds lines of real numbers, not values of shape {block.shape}.")
    return block


def _limits(block: npt.NDArray[Any] | None) -> tuple[float, float]:
    """An axis twice as long as the values need, so that none marks saturation and that corrected lines fit as well.

    A file keeps its minimum and its range to the last digit.
    """
    finite = np.array([]) if block is None else block[np.isfinite(block)]
    if not finite.size:
        return 0.0, 1.0
    low, high = float(finite.min()), float(finite.max())
    margin = ((high - low) or abs(low) or 1.0) / 2
    minimum = _stored_below(low - margin)
    return minimum, minimum + _stored_above(high + margin, minimum)


def _stored_below(number: float) -> float:
    stored = as_stored(number)
    return stored if stored <= number else as_stored(stored - _last_digit(number))


def _stored_above(high: float, minimum: float) -> float:
    stored = as_stored(high - minimum)
    return stored if minimum + stored >= high else as_stored(stored + _last_digit(stored))


def _last_digit(number: float) -> float:
    """What one is worth in the last of 6 significant digits."""
    return math.pow(10, math.floor(math.log10(abs(number))) - 5) if number else 0.0


def add(group: Group, wanted: Wanted) -> Channel:
    """Adds a channel in the first empty slot, or in a new one. If it is refused, the group is as it was."""
    slots = int(group._get("GetChannelCount"))
    slot = next((slot for slot in range(slots) if not group._get("HasChannelBuffer", slot)), slots)
    if slot == slots:
        _resize(group, slots + 1)
    channel = group._channel(slot)
    try:
        wanted.fill(channel)
    except BaseException:
        group._handle.forget(channel._place)
        if group._get("HasChannelBuffer", slot):
            group._change("DeleteChannelBuffer", slot)
        if slot == slots:
            _resize(group, slots)
        raise
    return channel


def _resize(group: Group, count: int) -> None:
    """Gives the group more slots. The library drops its channels meanwhile, so they are put aside."""
    channels = group.channels
    for channel in channels:
        if channel.x.varies:
            raise Error(f"Adding a channel would lose the point axes that lines of {channel.name!r} have of their own.")
        if not channel.valid.all():
            raise Error(f"Adding a channel would lose which points of {channel.name!r} were never acquired.")
    kept = [(channel, channel.raw, _axes(channel)) for channel in channels]
    known = group._handle.changes.clipped
    clipped = {channel._place: dict(known.get(channel._place, {})) for channel in channels}
    group._change("SetChannelCount", count)
    for channel, raw, axes in kept:
        channel._change("SetChannelXYDimension", raw.shape[1], raw.shape[0])
        for function, value in axes.items():
            channel._change(function, value)
        channel.write(raw, raw=True)
    known.update(clipped)


def _axes(channel: Channel) -> dict[str, Any]:
    """The properties of the three axes as they are, by the functions that set them."""
    properties: dict[str, Any] = {}
    for axis in (channel.x, channel.y, channel.signal):
        for what in ("Name", "Unit"):
            properties[axis._function("Set", what)] = channel._text(axis._function("Get", what)).encode("utf-8")
        for what in ("Min", "Range"):
            properties[axis._function("Set", what)] = channel._get(axis._function("Get", what))
    return properties
