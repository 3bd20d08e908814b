"""Writes values of channels as pictures, as TIFF and as NetCDF; the same values give the same bytes."""

from __future__ import annotations

import json
import struct
from pathlib import Path
from typing import Any

import numpy as np
import numpy.typing as npt

from .._show.picture import colours, contrast, png
from ..channel import Channel

Values = npt.NDArray[np.float64]


def write_png(path: str, values: Values, channel: Channel, step: int = 1) -> None:
    """An image with a pixel for each sample, line 0 at the bottom, transparent where nothing was acquired.

    Colours span the range from the 1st to the 99th percentile.
    """
    del channel
    shown = values[::step, ::step][::-1]
    low, high = contrast(shown)
    fractions = np.nan_to_num((shown - low) / ((high - low) or 1.0))
    alpha = np.where(np.isfinite(shown), 255, 0).astype(np.uint8)
    Path(path).write_bytes(png(np.dstack([colours(fractions), alpha])))


# Tags of the Tagged Image File Format, revision 6.0, in the order that it wants, and their types.
_SHORT, _LONG, _ASCII = 3, 4, 2
_FLOATING_POINT = 3


def write_tiff(path: str, values: Values, channel: Channel) -> None:
    """One strip of 32-bit floating-point numbers in the unit of the signal, line 0 at the bottom; NaN is no sample.

    The description is JSON with the name and the unit of the channel and its axes.
    """
    samples = np.ascontiguousarray(values[::-1], "<f4").tobytes()
    text = json.dumps(_description(channel)).encode() + b"\0"  # ASCII: other characters are escaped
    begin = 8 + len(samples) + len(samples) % 2
    height, width = values.shape
    entries = [
        (256, _LONG, 1, width),
        (257, _LONG, 1, height),
        (258, _SHORT, 1, 32),
        (259, _SHORT, 1, 1),  # no compression
        (262, _SHORT, 1, 1),  # large is light
        (270, _ASCII, len(text), begin + 2 + 11 * 12 + 4),
        (273, _LONG, 1, 8),
        (277, _SHORT, 1, 1),
        (278, _LONG, 1, height),
        (279, _LONG, 1, len(samples)),
        (339, _SHORT, 1, _FLOATING_POINT),
    ]
    directory = b"".join(struct.pack("<HHII", *entry) for entry in entries)
    head = b"II*\0" + struct.pack("<I", begin)
    padding = b"\0" * (len(samples) % 2)
    end = struct.pack("<H", len(entries)) + directory + struct.pack("<I", 0) + text
    Path(path).write_bytes(head + samples + padding + end)


def _description(channel: Channel) -> dict[str, Any]:
    axes = {name: getattr(channel, name) for name in ("x", "y")}
    ends = {name: {"unit": axis.unit, "min": axis.minimum, "range": axis.range} for name, axis in axes.items()}
    return {"name": channel.name, "unit": channel.unit, **ends}


def write_netcdf(path: str, values: Values, channel: Channel) -> None:
    """A labelled array with coordinates and units, as :meth:`Channel.to_xarray` makes it."""
    channel.to_xarray().copy(data=values).to_netcdf(path, engine="netcdf4")


WRITERS = {"png": write_png, "tiff": write_tiff, "netcdf": write_netcdf}
SUFFIXES = {"png": ".png", "tiff": ".tif", "netcdf": ".nc"}
