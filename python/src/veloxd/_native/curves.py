"""Calls the library of force curves, which keeps no state: any number of threads may call it at once."""

from __future__ import annotations

import ctypes
import functools
from typing import Any

import numpy as np
import numpy.typing as npt

from . import curve_declarations as c
from .library import load


@functools.cache
def library() -> ctypes.CDLL:
    """The library with the types of all its functions, loaded once; raises `LibraryError` if it is not found."""
    return load("VELOxdCurves", c.FUNCTIONS, c.DESCRIPTIONS)


def default_options() -> c.VELCurveOptions:
    """The options that apply where nobody says otherwise."""
    options = c.VELCurveOptions()
    library().VELCurveDefaults(ctypes.byref(options))
    return options


def reason_text(reason: int) -> str:
    """The phrase that the library has for a reason."""
    text: bytes = library().VELCurveReasonText(reason)
    return text.decode("utf-8")


class Rows:
    """Rows of signals in memory, which all begin at ``start`` and have the distance ``step`` between their points.

    ``signal`` is of float64 and of shape (curves, points). It is not copied where its points are contiguous.
    """

    def __init__(self, signal: npt.NDArray[np.float64], start: float, step: float) -> None:
        self.shape = signal.shape
        self._signal = signal if _is_addressable(signal) else np.ascontiguousarray(signal)
        pitch = max(self._signal.strides[0] // 8, self.shape[1])
        self._block = c.VELCurves(*self.shape, pitch, start, step, self._signal.ctypes.data)

    def compute(self, name: str, options: c.VELCurveOptions, *out: npt.NDArray[Any]) -> bool:
        """Calls a function, which fills ``out``: contiguous results by curve, and one number for each point of each.

        Returns whether all options are within their bounds. If they are not, nothing is filled in.
        """
        arguments: list[Any] = [one.ctypes.data for one in out]
        if out[-1].ndim == 2:
            arguments.append(self.shape[1])
        code = getattr(library(), name)(ctypes.byref(self._block), ctypes.byref(options), *arguments)
        assert code != c.VEL_CURVE_BAD_CALL
        return bool(code == c.VEL_CURVE_OK)


def _is_addressable(signal: npt.NDArray[np.float64]) -> bool:
    """Whether each row is a run of numbers, and rows follow each other upwards at a whole number of them."""
    rows, points = signal.shape
    row_stride, point_stride = signal.strides
    has_rows = rows <= 1 or (row_stride % 8 == 0 and row_stride >= 8 * points)
    return signal.flags.aligned and has_rows and (points <= 1 or point_stride == 8)
