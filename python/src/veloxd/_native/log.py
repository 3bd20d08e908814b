"""Passes the library's log to the logger ``veloxd``.

The library, if it is asked to, prints its records with the ``stdout`` of the C run-time. GNU's lets it be another
stream for the time of a call, which concerns neither the descriptor 1 nor what Python prints. Where the run-time is
another one, the library is not asked, and there are no records.
"""

from __future__ import annotations

import ctypes
import functools
import logging
import re
from types import TracebackType

from .library import library, prints_with_gnu

LOGGER = logging.getLogger("veloxd")

_RECORD = re.compile(r"\[[^\]]*\] \[[^\]]*\] \[(?P<level>\w+)\] +(?P<message>.*)")
_LEVELS = {
    "trace": logging.DEBUG,
    "debug": logging.DEBUG,
    "info": logging.INFO,
    "warning": logging.WARNING,
    "error": logging.ERROR,
    "fatal": logging.CRITICAL,
}


class _Stream:
    """A stream in memory that can take the place of ``stdout``.

    It is made once and never closed, because a C++ run-time that another thread loads meanwhile would keep it.
    """

    def __init__(self, runtime: ctypes.CDLL) -> None:
        runtime.open_memstream.restype = ctypes.c_void_p
        for function in (runtime.fflush, runtime.rewind):
            function.argtypes = [ctypes.c_void_p]
        runtime.fputs.argtypes = [ctypes.c_char_p, ctypes.c_void_p]
        self._runtime = runtime
        self._text = ctypes.c_void_p()
        self._size = ctypes.c_size_t()
        self._stream = runtime.open_memstream(ctypes.byref(self._text), ctypes.byref(self._size))
        self._standard = ctypes.c_void_p.in_dll(runtime, "stdout")
        self._usual = self._standard.value

    def begin(self) -> None:
        self._usual = self._standard.value
        self._standard.value = self._stream

    def end(self) -> bytes:
        """Puts the usual stream back, and returns what was printed meanwhile."""
        self._standard.value = self._usual
        self._runtime.fflush(self._stream)
        if not self._size.value:
            return b""
        printed = ctypes.string_at(self._text, self._size.value)
        self._runtime.rewind(self._stream)
        return printed

    def print(self, line: bytes) -> None:
        self._runtime.fputs(line, self._usual)


@functools.cache
def _stream() -> _Stream | None:
    """The stream, or None if ``stdout`` of the C run-time cannot be replaced."""
    library()  # whose own C++ run-time must find the usual stream
    return _Stream(ctypes.CDLL(None)) if prints_with_gnu() else None


class Capture:
    """While it is entered, keeps what the library prints; :meth:`publish` logs it. The library's lock must be held."""

    def __init__(self) -> None:
        self._stream = _stream()
        self._printed = b""

    def __enter__(self) -> Capture:
        if self._stream:
            self._stream.begin()
        return self

    def __exit__(
        self, kind: type[BaseException] | None, error: BaseException | None, trace: TracebackType | None
    ) -> None:
        if self._stream:
            self._printed = self._stream.end()

    def publish(self) -> None:
        """Logs the records, and prints what other threads have printed meanwhile. Call it without the lock."""
        for line in self._printed.splitlines(keepends=True):
            record = _RECORD.match(line.decode("utf-8", "replace"))
            if record:
                LOGGER.log(_LEVELS.get(record["level"], logging.WARNING), "%s", record["message"])
            elif self._stream:
                self._stream.print(line)
