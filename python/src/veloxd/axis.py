"""The axes of a channel."""

from __future__ import annotations

import math
from collections.abc import Mapping
from typing import TYPE_CHECKING, Any, Callable, Union

import numpy as np
import numpy.typing as npt

from ._native import blocks
from ._native.library import LOCK, encode, encode_name

if TYPE_CHECKING:
    from .channel import Channel

__all__ = ["Axis", "AxisLike", "PointAxis"]

# What an axis can be made like: another one, or the properties to set, by name.
AxisLike = Union["Axis", Mapping[str, Union[str, float]]]


def as_stored(number: float) -> float:
    """``number`` with the 6 significant digits that files keep of the ends of axes."""
    return float(f"{number:.6g}")


class Axis:
    """One axis of a channel: its name, its unit, and the physical values of its ends.

    A file keeps 6 significant digits of ``minimum`` and ``range``, so assigning to them rounds to these at once.

    Examples
    --------
    >>> with veloxd.open("scan.oxd") as file:
    ...     file["ForwardScan"]["Topography"].y
    <veloxd.Axis 'Y': 0 to 1e-06 m, 8 values>
    """

    __slots__ = ("_channel", "_kind")

    def __init__(self, channel: Channel, kind: str) -> None:
        self._channel = channel
        self._kind = kind

    def _function(self, verb: str, what: str) -> str:
        return f"{verb}ChannelData_{self._kind}Axis{what}"

    @property
    def name(self) -> str:
        """What is measured along the axis, for example ``"X"``."""
        return self._channel._text(self._function("Get", "Name"))

    @name.setter
    def name(self, name: str) -> None:
        self._set(name=name)

    @property
    def unit(self) -> str:
        """The unit of ``minimum`` and ``range``, for example ``"m"``. Setting it converts no numbers."""
        return self._channel._text(self._function("Get", "Unit"))

    @unit.setter
    def unit(self, unit: str) -> None:
        self._set(unit=unit)

    @property
    def minimum(self) -> float:
        """The physical value at the start of the axis."""
        return float(self._channel._get(self._function("Get", "Min")))

    @minimum.setter
    def minimum(self, minimum: float) -> None:
        self._set(minimum=minimum)

    @property
    def range(self) -> float:
        """The span of the axis, which may be negative: its end less its start."""
        return float(self._channel._get(self._function("Get", "Range")))

    @range.setter
    def range(self, range: float) -> None:
        self._set(range=range)

    @property
    def maximum(self) -> float:
        """The physical value at the end of the axis, ``minimum + range``."""
        with LOCK:
            return self.minimum + self.range

    @property
    def values(self) -> npt.NDArray[np.float64]:
        """The positions of the samples: for the x axis an array of shape (points,), for the y axis one of (lines,).

        The first is ``minimum``, the last ``minimum + range``. A signal axis has no samples along it: ``TypeError``.
        """
        return positions(self.minimum, self.range, self._count())

    def _count(self) -> int:
        if self._kind == "Signal":
            raise TypeError("A signal axis has no samples along it; the values of the samples are channel.values.")
        return self._channel.shape[0 if self._kind == "Line" else 1]

    def update(
        self,
        name: str | None = None,
        unit: str | None = None,
        minimum: float | None = None,
        range: float | None = None,
    ) -> None:
        """Sets those properties that are given: all of them, or none if one is refused."""
        given = {"name": name, "unit": unit, "minimum": minimum, "range": range}
        self._set(**{key: value for key, value in given.items() if value is not None})

    def _set(self, **properties: Any) -> None:
        checked = {_PROPERTIES[key][0]: _PROPERTIES[key][1](value) for key, value in properties.items()}
        with LOCK:
            for what, value in checked.items():
                self._channel._change(self._function("Set", what), value)

    def as_dict(self) -> dict[str, str | float]:
        """The properties of the axis by name, as `Group.create_channel` takes them."""
        with LOCK:
            return {"name": self.name, "unit": self.unit, "minimum": self.minimum, "range": self.range}

    def __repr__(self) -> str:
        with LOCK:
            count = "" if self._kind == "Signal" else f", {self._count()} values"
            unit = f" {self.unit}" if self.unit else ""
            return f"<veloxd.Axis {self.name!r}: {self.minimum:.6g} to {self.maximum:.6g}{unit}{count}>"


class PointAxis(Axis):
    """The axis along the lines of a channel, which may begin and end elsewhere in each line.

    So it is with curves that start where the tip happens to be. ``minimum`` and ``range`` are those of the channel.
    """

    __slots__ = ()

    def __init__(self, channel: Channel) -> None:
        super().__init__(channel, "Point")

    def of_line(self, line: int) -> tuple[float, float]:
        """The minimum and the range of one line, of which negative numbers count from the last one."""
        with LOCK:
            lines = self._channel.shape[0]
            if not -lines <= line < lines:
                raise IndexError(f"Line {line} is outside of a channel of {lines} lines.")
            position = line % lines
            get = self._channel._get
            return (
                float(get("GetChannelData_PointAxisMinPerLine", position)),
                float(get("GetChannelData_PointAxisRangePerLine", position)),
            )

    def of_lines(self) -> npt.NDArray[np.float64]:
        """The minimum and the range of every line: shape (lines, 2)."""
        with LOCK:
            channel = self._channel
            return blocks.point_axes(channel._handle.number, channel._numbers(), range(channel.shape[0])).T

    @property
    def varies(self) -> bool:
        """Whether a line begins or ends elsewhere than the channel says."""
        with LOCK:
            return bool((self.of_lines() != (self.minimum, self.range)).any())

    @property
    def grid(self) -> npt.NDArray[np.float64]:
        """The position of every sample, with the axis of its own line: shape (lines, points)."""
        with LOCK:
            minimum, span = np.hsplit(self.of_lines(), 2)
            grid: npt.NDArray[np.float64] = positions(minimum, span, self._channel.shape[1])
        return grid


def positions(minimum: Any, span: Any, count: int) -> npt.NDArray[np.float64]:
    """``count`` positions, the first of which is ``minimum`` and the last ``minimum + span``.

    Of several axes, whose properties are in columns, it has a row for each.
    """
    row: npt.NDArray[np.float64] = minimum + span * (np.arange(count) / max(count - 1, 1))
    return row


def _finite(number: float, what: str) -> float:
    if not math.isfinite(number):
        raise ValueError(f"{what} must be a finite number, not {number}.")
    return as_stored(float(number))


# What the library calls each property, and the check that makes what it takes of a value.
_PROPERTIES: dict[str, tuple[str, Callable[[Any], Any]]] = {
    "name": ("Name", lambda name: encode_name(name, "The name of an axis")),
    "unit": ("Unit", lambda unit: encode(unit, "The unit of an axis")),
    "minimum": ("Min", lambda number: _finite(number, "The minimum of an axis")),
    "range": ("Range", lambda number: _finite(number, "The range of an axis")),
}
