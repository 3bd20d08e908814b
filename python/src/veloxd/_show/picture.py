"""Small pictures of channels, made without any other package: PNG for images, SVG for curves."""

from __future__ import annotations

import struct
import zlib
from typing import TYPE_CHECKING

import numpy as np
import numpy.typing as npt

if TYPE_CHECKING:
    from ..channel import Channel

_LONG_SIDE = 128  # pixels
_MOST_CURVES = 16
_CURVE_HEIGHT = 80  # pixels

# A colour in which lightness grows evenly: a helix around the grey diagonal of the colour cube (D. A. Green, Bull.
# Astr. Soc. India 39, 289, 2011), with the weights by which the eye sees red, green and blue.
_WEIGHTS = np.array([[-0.14861, 1.78277], [-0.29227, -0.90649], [1.97294, 0.0]])


def colours(fractions: npt.NDArray[np.float64]) -> npt.NDArray[np.uint8]:
    """Colours, from dark to light, for numbers from 0 to 1: the shape of ``fractions`` and one axis of 3 more."""
    lightness = 0.04 + 0.92 * np.clip(fractions, 0, 1)
    angle = 2 * np.pi * (0.45 / 3 + 1 + 0.45 * fractions)
    amplitude = 1.1 * lightness * (1 - lightness) / 2
    turned = np.stack([np.cos(angle), np.sin(angle)], axis=-1) @ _WEIGHTS.T
    rgb = np.clip(lightness[..., np.newaxis] + amplitude[..., np.newaxis] * turned, 0, 1)
    rounded: npt.NDArray[np.uint8] = np.round(255 * rgb).astype(np.uint8)
    return rounded


def contrast(values: npt.NDArray[np.float64]) -> tuple[float, float]:
    """The 1st and the 99th percentile of the values that are numbers; 0 and 1 if there are none."""
    numbers = values[np.isfinite(values)]
    if not numbers.size:
        return 0.0, 1.0
    low, high = np.percentile(numbers, [1, 99])
    return float(low), float(high)


def png(rgba: npt.NDArray[np.uint8]) -> bytes:
    """A PNG file of an image of shape (height, width, 4)."""
    height, width, _ = rgba.shape
    rows = np.zeros((height, 1 + 4 * width), np.uint8)  # each begins with the number of its filter, 0 for none
    rows[:, 1:] = rgba.reshape(height, -1)
    header = struct.pack(">IIBBBBB", width, height, 8, 6, 0, 0, 0)
    parts = [(b"IHDR", header), (b"IDAT", zlib.compress(rows.tobytes())), (b"IEND", b"")]
    chunks = [
        struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data)) for kind, data in parts
    ]
    return b"\x89PNG\r\n\x1a\n" + b"".join(chunks)


def image(channel: Channel) -> bytes:
    """A PNG of the channel as an image, line 0 at the bottom; transparent where nothing was acquired."""
    lines, points = channel.shape
    step = max(1, -(-max(lines, points) // _LONG_SIDE))
    values = channel[::step, ::step][::-1]
    low, high = contrast(values)
    fractions = np.nan_to_num((values - low) / ((high - low) or 1.0))
    alpha = np.where(np.isfinite(values), 255, 0).astype(np.uint8)
    return png(np.dstack([colours(fractions), alpha]))


def curves(channel: Channel) -> str:
    """An SVG of some of the channel's lines as curves over the point axis."""
    lines, points = channel.shape
    values = channel[:: max(1, -(-lines // _MOST_CURVES)), :: max(1, points // (2 * _LONG_SIDE))]
    low, high = (float(np.nanmin(values)), float(np.nanmax(values))) if np.isfinite(values).any() else (0.0, 1.0)
    across = np.linspace(1, _LONG_SIDE - 1, values.shape[1])
    up = _CURVE_HEIGHT - 2 - (_CURVE_HEIGHT - 4) * (values - low) / ((high - low) or 1.0)
    shades = colours(np.linspace(0.15, 0.7, len(values)))
    paths = "".join(
        f'<polyline fill="none" stroke="rgb{tuple(shade.tolist())}" points="{_points(across, row)}"/>'
        for row, shade in zip(up, shades)
    )
    return f'<svg xmlns="http://www.w3.org/2000/svg" width="{_LONG_SIDE}" height="{_CURVE_HEIGHT}">{paths}</svg>'


def _points(across: npt.NDArray[np.float64], up: npt.NDArray[np.float64]) -> str:
    return " ".join(f"{x:.1f},{y:.1f}" for x, y in zip(across.tolist(), up.tolist()) if np.isfinite(y))
