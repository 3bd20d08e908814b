"""Groups: the channels of a file that were measured together."""

from __future__ import annotations

from typing import TYPE_CHECKING, Any

import numpy.typing as npt

from . import _adding
from ._names import Named
from ._native import blocks
from ._native.handle import Handle
from ._native.library import LOCK, encode_name
from ._part import Part
from .axis import AxisLike
from .channel import Channel

if TYPE_CHECKING:
    import xarray

__all__ = ["Group"]


class Group(Part, Named[Channel]):
    """A group of channels, for example those of the forward scan. A mapping from names to channels.

    Positions find channels, too: ``group[0]``, ``group[-1]``. ``del group["Phase"]`` deletes a channel.

    Examples
    --------
    >>> with veloxd.open("scan.oxd") as file:
    ...     group = file["ForwardScan"]
    ...     list(group), group[0].name
    (['Topography', 'Phase'], 'Topography')
    """

    __slots__ = ()

    _what = "channel"

    def __init__(self, handle: Handle, number: int) -> None:
        super().__init__(handle, (number,))

    @property
    def name(self) -> str:
        """The name of the group. Several groups of a file may have the same name."""
        return self._text("GetGroupName")

    @name.setter
    def name(self, name: str) -> None:
        self._change("SetGroupName", encode_name(name, "The name of a group"))

    @property
    def logical_id(self) -> int:
        """A number of 32 bits that the file stores for the group."""
        return int(self._get("GetLogicalGroupId"))

    @logical_id.setter
    def logical_id(self, number: int) -> None:
        if not 0 <= number < 2**32 - 1:
            raise ValueError(f"A logical id is a number from 0 to {2**32 - 2}, not {number}.")
        self._change("SetLogicalGroupId", number)

    @property
    def channels(self) -> tuple[Channel, ...]:
        """All channels in order, including those that share a name."""
        return self._all()

    def _listed(self) -> tuple[list[int], list[str]]:
        with LOCK:
            return blocks.channels(self._handle.number, *self._numbers())

    def _with_number(self, number: int) -> Channel:
        return self._channel(number)

    def _channel(self, slot: int) -> Channel:
        with LOCK:
            known = self._handle.part((*self._place, slot))
            return known if isinstance(known, Channel) else Channel(self, slot)

    def create_channel(
        self,
        name: str,
        values: npt.ArrayLike | None = None,
        *,
        shape: tuple[int, int] | None = None,
        unit: str = "",
        limits: tuple[float, float] | None = None,
        x: AxisLike | None = None,
        y: AxisLike | None = None,
    ) -> Channel:
        """Adds a channel.

        Parameters
        ----------
        name, unit
            Those of the signal axis.
        values
            Real values of shape (lines, points) or (points,). Without them, all samples are 0 raw.
        shape
            Lines and points, instead of ``values``.
        limits
            The ends of the signal axis. Without them, the axis is twice as long as ``values`` need, because samples at
            its ends mark saturation, and because the result of a correction must fit, too.
        x, y
            The axes along and across the lines: axes of another channel, or dicts of some of ``name``, ``unit``,
            ``minimum`` and ``range``. Without them, positions are counted from 0.

        Raises
        ------
        ValueError
            if the values have a wrong shape or gaps, or texts are such as files do not keep.
        Error
            if the lines of a channel of the group have point axes of their own, which adding another would lose.

        Examples
        --------
        >>> with veloxd.create() as file:
        ...     group = file.create_group("ForwardScan")
        ...     x = {"name": "X", "unit": "m", "range": 1e-6}
        ...     height = group.create_channel("Height", [[0, 1e-9], [2e-9, 3e-9]], unit="m", x=x)
        ...     height.signal
        <veloxd.Axis 'Height': -1.5e-09 to 4.5e-09 m>
        """
        wanted = _adding.Wanted.of(name, values, shape, unit, limits, x, y)
        with LOCK:
            self._handle.require_writable()
            return _adding.add(self, wanted)

    def __delitem__(self, key: str | int) -> None:
        """Deletes a channel: ``del group["Topography"]``. Its slot stays, empty."""
        with LOCK:
            channel = self[key]
            channel._change("DeleteChannelBuffer")
            self._handle.forget(channel._place)

    def to_xarray(self) -> xarray.Dataset:
        """All channels as an ``xarray.Dataset`` with coordinates, units and the file's information, in memory."""
        from .xarray import group_to_xarray

        return group_to_xarray(self)

    def __repr__(self) -> str:
        from ._show.display import group_repr

        return group_repr(self)

    def _repr_html_(self) -> str:
        from ._show.display import group_html

        return group_html(self)

    def __reduce__(self) -> tuple[Any, ...]:
        # Opening numbers the groups from 0 in this order.
        with LOCK:
            return _group_of, (self._handle, group_ids(self._handle).index(self._numbers()[0]))


def group_ids(handle: Handle) -> list[int]:
    """The ids of all groups, in ascending order."""
    with LOCK:
        return blocks.groups(handle.number)[0]


def _group_of(handle: Handle, number: int) -> Group:
    with LOCK:
        known = handle.part((number,))
        return known if isinstance(known, Group) else Group(handle, number)
