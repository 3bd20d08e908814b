"""Draws channels and labelled arrays with matplotlib."""

from __future__ import annotations

from typing import TYPE_CHECKING, Any, Literal, NamedTuple

import numpy as np
import numpy.typing as npt

from .._native.library import LOCK
from .._prefixes import suitable
from .picture import colours, contrast

if TYPE_CHECKING:
    import matplotlib.axes

    from ..channel import Channel

_MOST_CURVES_IN_LEGEND = 8
_FLATTEST = 0.125  # a picture that is longer than that is not true to scale


class Labelled(NamedTuple):
    """Numbers with what is measured, and in which unit."""

    values: npt.NDArray[np.float64]
    name: str
    unit: str

    def scaled(self, like: Labelled | None = None) -> Labelled:
        """The same in a multiple of the unit that suits the numbers, or those of ``like`` if it has the same unit."""
        suited = like if like is not None and like.unit == self.unit else self
        finite = suited.values[np.isfinite(suited.values)]
        factor, unit = suitable(float(np.abs(finite).max()) if finite.size else 0.0, self.unit)
        return Labelled(self.values * factor, self.name, unit)

    @property
    def label(self) -> str:
        return f"{self.name} ({self.unit})" if self.unit else self.name


class Picture(NamedTuple):
    """What to draw: values of shape (lines, points) over the positions of points and lines."""

    signal: Labelled
    x: Labelled
    y: Labelled
    title: str
    is_curves: bool


def plot_channel(channel: Channel, level: str | None, ax: matplotlib.axes.Axes | None) -> matplotlib.axes.Axes:
    """Draws a channel, corrected by an operator if ``level`` names one."""
    with LOCK:
        x = channel.x.grid if channel.is_curves and channel.x.varies else channel.x.values
        title = channel.group.name if level is None else f"{channel.group.name}, {level} subtracted"
        if level == "derive":
            title = f"{channel.group.name}, derived"
        picture = Picture(
            Labelled(channel.read(level=level), channel.name, channel.unit),
            Labelled(x, channel.x.name, channel.x.unit),
            Labelled(channel.y.values, channel.y.name, channel.y.unit),
            title,
            channel.is_curves,
        )
    return draw(picture, ax)


def draw(picture: Picture, ax: matplotlib.axes.Axes | None, **style: Any) -> matplotlib.axes.Axes:
    """Draws on ``ax``, or on that of a new figure; ``style`` goes to matplotlib's function. Returns the axes."""
    if ax is None:
        import matplotlib.pyplot

        ax = matplotlib.pyplot.subplots(layout="constrained")[1]
    x, signal = picture.x.scaled(), picture.signal.scaled()
    if picture.is_curves:
        _draw_curves(ax, x, picture.y, signal, style)
    else:
        _draw_image(ax, x, picture.y.scaled(like=picture.x), signal, style)
    ax.set_xlabel(x.label)
    ax.set_title(picture.title)
    return ax


def _draw_curves(ax: matplotlib.axes.Axes, x: Labelled, y: Labelled, signal: Labelled, style: dict[str, Any]) -> None:
    lines = ax.plot(x.values.T if x.values.ndim == 2 else x.values, signal.values.T, **{"linewidth": 1, **style})
    ax.set_ylabel(signal.label)
    if len(lines) > _MOST_CURVES_IN_LEGEND and not {"color", "c"} & style.keys():
        for line, colour in zip(lines, colours(np.linspace(0.1, 0.75, len(lines))) / 255):
            line.set_color(tuple(colour))  # from dark, the first, to light
    if 1 < len(lines) <= _MOST_CURVES_IN_LEGEND:
        ax.legend(lines, [f"{position:g} {y.unit}".rstrip() for position in y.values], title=y.name)


def _draw_image(ax: matplotlib.axes.Axes, x: Labelled, y: Labelled, signal: Labelled, style: dict[str, Any]) -> None:
    low, high = contrast(signal.values)
    usual = {"cmap": _colour_map(), "vmin": low, "vmax": high, "origin": "lower", "interpolation": "nearest"}
    extent = (*_cell_ends(x.values), *_cell_ends(y.values))
    image = ax.imshow(signal.values, extent=extent, **{**usual, **style})
    ax.set_aspect(_aspect(x, y))
    ax.set_ylabel(y.label)
    assert ax.figure is not None
    ax.figure.colorbar(image, ax=ax, label=signal.label, extend=_beyond(image))


def _colour_map() -> Any:
    """That of the thumbnails, whose lightness grows evenly."""
    from matplotlib.colors import ListedColormap

    return ListedColormap(colours(np.linspace(0, 1, 256)) / 255, name="oxd")


def _beyond(image: Any) -> Literal["neither", "min", "max", "both"]:
    """At which ends of the colour bar there are values beyond, which is shown by an arrow."""
    low, high = image.get_clim()
    values = image.get_array()
    is_below, is_above = bool((values < low).any()), bool((values > high).any())
    if is_below and is_above:
        return "both"
    return "min" if is_below else "max" if is_above else "neither"


def _cell_ends(positions: npt.NDArray[np.float64]) -> tuple[float, float]:
    """Where the cells of an image begin and end: the first and the last sample are in the middle of theirs."""
    if not positions.size:
        return 0.0, 1.0
    half = float(positions[-1] - positions[0]) / (2 * max(positions.size - 1, 1)) or 0.5
    return float(positions[0]) - half, float(positions[-1]) + half


def _aspect(x: Labelled, y: Labelled) -> Any:
    """True to scale, within reason, where both axes have the same unit; otherwise as the figure has room."""
    spans = [abs(high - low) for low, high in (_cell_ends(x.values), _cell_ends(y.values))]
    is_true = x.unit == y.unit != "" and min(spans) > _FLATTEST * max(spans)
    return "equal" if is_true else "auto"
