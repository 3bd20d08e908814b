"""Channels: the images and curves of a file."""

from __future__ import annotations

from collections.abc import Iterator
from typing import TYPE_CHECKING, Any, Literal

import numpy as np
import numpy.typing as npt

from . import _reading, _writing
from ._native import blocks
from ._native.library import LOCK
from ._part import Part
from ._reading import Form
from ._selection import select
from ._values import as_numbers
from .axis import Axis, AxisLike, PointAxis

if TYPE_CHECKING:
    import matplotlib.axes
    import xarray

    from .group import Group

__all__ = ["Channel"]


class Channel(Part):
    """An image, or a set of curves: samples in lines of equal length, with an axis for each direction and the signal.

    Indexing reads real values, as far as needed: ``channel[10:20]``, ``channel[3, ::2]``, ``channel[channel.valid]``.
    Points that were never acquired are NaN. Assigning to an index or to :attr:`values` writes real values, assigning
    to :attr:`raw` writes raw samples. Arrays that are read are copies: changing them changes no channel.

    Examples
    --------
    >>> with veloxd.open("scan.oxd") as file:
    ...     topography = file["ForwardScan"]["Topography"]
    ...     topography.shape, topography.unit, topography[2, 5:7]
    ((8, 16), 'm', array([...]))
    """

    __slots__ = ("_group",)

    def __init__(self, group: Group, slot: int) -> None:
        super().__init__(group._handle, (*group._place, slot))
        self._group = group

    @property
    def group(self) -> Group:
        """The group that the channel is in."""
        return self._group

    @property
    def name(self) -> str:
        """The name of the channel, which is that of its signal axis."""
        return self.signal.name

    @name.setter
    def name(self, name: str) -> None:
        self.signal.name = name

    @property
    def unit(self) -> str:
        """The unit of the real values, which is that of the signal axis."""
        return self.signal.unit

    @unit.setter
    def unit(self, unit: str) -> None:
        self.signal.unit = unit

    @property
    def x(self) -> PointAxis:
        """The axis along the lines. Assigning another axis, or a dict of properties, copies its properties."""
        return PointAxis(self)

    @x.setter
    def x(self, like: AxisLike) -> None:
        _copy_axis(PointAxis(self), like)

    @property
    def y(self) -> Axis:
        """The axis across the lines. Assigning another axis, or a dict of properties, copies its properties."""
        return Axis(self, "Line")

    @y.setter
    def y(self, like: AxisLike) -> None:
        _copy_axis(Axis(self, "Line"), like)

    @property
    def signal(self) -> Axis:
        """The axis of the values. Changing its ends changes what values the raw samples mean."""
        return Axis(self, "Signal")

    @signal.setter
    def signal(self, like: AxisLike) -> None:
        _copy_axis(Axis(self, "Signal"), like)

    @property
    def shape(self) -> tuple[int, int]:
        """The number of lines and the number of points per line."""
        with LOCK:
            return blocks.shape(self._handle.number, self._numbers())

    @property
    def ndim(self) -> int:
        """The number of dimensions, 2."""
        return 2

    @property
    def size(self) -> int:
        """The number of samples, lines times points."""
        lines, points = self.shape
        return lines * points

    @property
    def dtype(self) -> np.dtype[np.float64]:
        """The type of the real values."""
        return np.dtype(np.float64)

    @property
    def is_curves(self) -> bool:
        """Whether the lines are curves rather than the lines of an image: there is one, or they share no unit."""
        with LOCK:
            return self.shape[0] == 1 or self.x.unit != self.y.unit

    @property
    def values(self) -> npt.NDArray[np.float64]:
        """All real values in the unit of the signal axis: a new array of float64 of shape (lines, points).

        Points that were never acquired are NaN. Assigning writes all of them; a number or a line is repeated. Values
        that the signal axis cannot hold become its nearer end, which `File.save` reports.
        """
        return self.read()

    @values.setter
    def values(self, values: npt.ArrayLike) -> None:
        self.write(values)

    @property
    def raw(self) -> npt.NDArray[np.int32]:
        """All raw samples, from -2**29 to 2**29 - 1: a new array of int32 of shape (lines, points).

        Points that were never acquired are `RAW_MISSING`. Assigning writes all samples.
        """
        return self.read(raw=True)

    @raw.setter
    def raw(self, samples: npt.ArrayLike) -> None:
        self.write(samples, raw=True)

    @property
    def valid(self) -> npt.NDArray[np.bool_]:
        """Which points were acquired: a new array of bool of shape (lines, points)."""
        with LOCK:
            lines, points = self.shape
            return _reading.valid(self, range(lines), points)

    def level(self, operator: str, key: Any = ..., *, out: npt.NDArray[Any] | None = None) -> npt.NDArray[Any]:
        """Real values after a correction of each line.

        Parameters
        ----------
        operator
            ``"mean"``, ``"line"``, ``"parabola"`` or ``"polynomial"`` (of degree 4) subtracts a least-squares fit;
            ``"derive"`` gives the difference from each sample to the next one.
        key
            The samples to read, as in ``channel[key]``. A line is always corrected as a whole.
        out
            As for :meth:`read`.

        Returns
        -------
        numpy.ndarray
            As :meth:`read`. A corrected line is centred on the middle of the signal axis, as in the program ``oxd``.
            Lines of fewer samples than the operator needs are NaN.

        Examples
        --------
        >>> with veloxd.open("scan.oxd") as file:
        ...     flat = file["ForwardScan"]["Topography"].level("line")
        >>> bool(np.ptp(flat) < 1e-12)
        True
        """
        return self.read(key, level=operator, out=out)

    def read(
        self, key: Any = ..., *, raw: bool = False, level: str | None = None, out: npt.NDArray[Any] | None = None
    ) -> npt.NDArray[Any]:
        """Samples of the channel.

        Parameters
        ----------
        key
            The samples to read, as in ``channel[key]``.
        raw
            Whether to read raw samples (int32) rather than real values (float64).
        level
            The operator to correct each line with, as for :meth:`level`.
        out
            An array to read into, of the shape of the result and a type that can hold it. Lines go straight to where
            they belong if they are selected whole and contiguous in ``out``, whatever the distance between them.

        Returns
        -------
        numpy.ndarray
            ``out``, or a new array.

        Raises
        ------
        IndexError
            if the key is outside of the channel.
        DamagedFileError
            if a selected line cannot be read.
        """
        form = Form.of(raw)
        code = _reading.operator_code(level)
        with LOCK:
            shape = self.shape
            if _is_mask(key, shape):
                values = self.read(raw=raw, level=level)[key]
                return values if out is None else _fill(out, values)
            selection = select(key, shape)
            target = np.empty(selection.shape, form.dtype) if out is None else _suitable(out, selection.shape, form)
            block = target.reshape(selection.full_shape)  # a view, since it only adds axes of one element
            _reading.read(self, shape[1], selection, form, code, block)
        return target if target.shape or out is not None else target[()]

    def write(self, values: npt.ArrayLike, key: Any = ..., *, raw: bool = False) -> None:
        """Writes real values, or raw samples (integers), to the samples that ``key`` selects.

        Values beyond the ends of the signal axis become the nearer end. NaN, or `RAW_MISSING` among raw samples,
        leaves a point not acquired if it was so before, and no value stands behind it. Masked values count as NaN.

        Raises
        ------
        ReadOnlyError
            if the file was opened with mode ``"r"``.
        ValueError
            if the shapes do not fit, there are gaps in lines, or the signal axis has no extent. Nothing is written.
        TypeError
            if the values are no real numbers, or raw samples no integers.

        Examples
        --------
        >>> with veloxd.open("scan.oxd", mode="r+") as file:
        ...     topography = file["ForwardScan"]["Topography"]
        ...     topography.write(0.0, np.s_[:2])  # the first two lines; the same as topography[:2] = 0.0
        ...     bool(np.abs(topography[:2]).max() < 1e-15)
        True
        """
        form = Form.of(raw)
        numbers = as_numbers(values, form)
        with LOCK:
            limits = self._limits(raw)
            shape = self.shape
            if _is_mask(key, shape):
                mask = np.asarray(key)
                rows = _writing.rows_of_mask(mask, np.broadcast_to(numbers, (int(np.count_nonzero(mask)),)))
            else:
                selection = select(key, shape)
                block = np.broadcast_to(numbers, selection.shape).reshape(selection.full_shape)
                if selection.is_whole_line and not _writing.has_missing(block, form):
                    _writing.write_lines(self, selection.lines, block, form, limits)
                    return
                rows = _writing.rows_of_block(selection.lines, selection.points, shape[1], block)
            _writing.write(self, rows, form, limits)

    def _limits(self, raw: bool) -> tuple[float, float]:
        if raw:
            return _writing.RAW_MINIMUM, _writing.RAW_MAXIMUM
        ends = sorted((self.signal.minimum, self.signal.maximum))
        if not np.isfinite(ends).all() or ends[0] == ends[1]:
            raise ValueError(f"The signal axis of {self.name!r} has no extent: set channel.signal.range first.")
        return ends[0], ends[1]

    def plot(self, level: str | None = None, ax: matplotlib.axes.Axes | None = None) -> matplotlib.axes.Axes:
        """Draws the channel with matplotlib: an image true to scale, or its curves, with labels in suitable units.

        The colours of an image span its values from the 1st to the 99th percentile; arrows at the colour bar mark
        that there are values beyond.

        Parameters
        ----------
        level
            The operator to correct each line with, as for :meth:`level`.
        ax
            Where to draw; without it, a new figure is made.

        Returns
        -------
        matplotlib.axes.Axes
            What was drawn on. ``.figure.savefig("name.png")`` saves it.

        Raises
        ------
        ImportError
            if matplotlib is not installed.
        """
        from ._show.plot import plot_channel

        return plot_channel(self, level, ax)

    def to_xarray(self) -> xarray.DataArray:
        """The real values as an ``xarray.DataArray`` of shape (lines, points) with coordinates and units, in memory.

        Raises
        ------
        ImportError
            if xarray is not installed.
        """
        from .xarray import channel_to_xarray

        return channel_to_xarray(self)

    def __getitem__(self, key: Any) -> npt.NDArray[Any]:
        return self.read(key)

    def __setitem__(self, key: Any, values: npt.ArrayLike) -> None:
        self.write(values, key)

    def __len__(self) -> int:
        return self.shape[0]

    def __iter__(self) -> Iterator[npt.NDArray[Any]]:
        return (self[line] for line in range(len(self)))

    def __array__(self, dtype: npt.DTypeLike | None = None, copy: bool | None = None) -> npt.NDArray[Any]:
        if copy is False:
            raise ValueError("The values of a channel are always copied.")
        return self.values if dtype is None else self.values.astype(dtype)

    def __repr__(self) -> str:
        from ._show.display import channel_repr

        return channel_repr(self)

    def _repr_html_(self) -> str:
        from ._show.display import channel_html

        return channel_html(self)

    def __reduce__(self) -> tuple[Any, ...]:
        return _channel_of, (self._group, self._numbers()[-1])


def _channel_of(group: Group, slot: int) -> Channel:
    return group._channel(slot)


def _copy_axis(axis: Axis, like: AxisLike) -> None:
    properties: Any = like.as_dict() if isinstance(like, Axis) else like
    axis.update(**properties)


def _is_mask(key: Any, shape: tuple[int, int]) -> bool:
    return isinstance(key, np.ndarray) and key.dtype == bool and key.shape == shape


def _suitable(out: npt.NDArray[Any], shape: tuple[int, ...], form: Form) -> npt.NDArray[Any]:
    if not isinstance(out, np.ndarray):
        raise TypeError(f"out must be a NumPy array, not {type(out).__name__}.")
    if isinstance(out, np.ma.MaskedArray):
        raise TypeError("out is a masked array, whose mask would hide what is read: give its data, out.data.")
    if out.shape != shape:
        raise ValueError(f"out has the shape {out.shape}; {shape} is needed.")
    casting: Literal["safe", "same_kind"] = "safe" if form.dtype.kind == "i" else "same_kind"
    if out.dtype.kind not in "iufc" or not np.can_cast(form.dtype, out.dtype, casting):
        raise TypeError(f"out of type {out.dtype} cannot hold samples of type {form.dtype}.")
    if not out.flags.writeable:
        raise ValueError("out is read-only.")
    return out


def _fill(out: npt.NDArray[Any], values: npt.NDArray[Any]) -> npt.NDArray[Any]:
    np.copyto(_suitable(out, values.shape, Form.of(values.dtype.kind == "i")), values, casting="same_kind")
    return out
