"""How finely channels resolve their signal."""

from __future__ import annotations

import numpy as np

from .channel import Channel

_MOST_AT_ONCE = 2**20  # samples


def signal_step(channel: Channel) -> float:
    """The smallest difference of real values, which samples of 8 or 16 bits widen; in the unit of the signal axis."""
    width = 2.0 ** max(30 - _stored_bits(channel), 0)
    return abs(channel.signal.range) * width / (2.0**30 - 1)


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
