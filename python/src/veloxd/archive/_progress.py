"""A bar on the standard error, where that is a terminal."""

from __future__ import annotations

import sys
import time

_WIDTH = 30
_PAUSE = 0.2  # seconds


class Progress:
    """A bar with the rate and the time left. Nothing is shown where the standard error is no terminal."""

    def __init__(self, total: int) -> None:
        self._total = total
        self._done = 0
        self._start = self._shown = time.monotonic()
        self._is_terminal = sys.stderr.isatty()
        self._length = 0

    def advance(self) -> None:
        """One more is done."""
        self._done += 1
        now = time.monotonic()
        if self._is_terminal and now - self._shown > _PAUSE:
            self._shown = now
            self._show(now - self._start)

    def close(self) -> None:
        """Removes the bar."""
        if self._length:
            print("\r" + " " * self._length, end="\r", file=sys.stderr, flush=True)

    def _show(self, seconds: float) -> None:
        rate = self._done / seconds
        left = round((self._total - self._done) / rate)
        filled = _WIDTH * self._done // self._total
        bar = "#" * filled + " " * (_WIDTH - filled)
        text = f"[{bar}] {self._done}/{self._total}, {rate:.1f} files/s, {left // 60}:{left % 60:02} left"
        print("\r" + text.ljust(self._length), end="", file=sys.stderr, flush=True)
        self._length = max(self._length, len(text))
