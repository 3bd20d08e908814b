"""Why a curve has no value."""

from __future__ import annotations

from enum import IntEnum

from .._native import curve_declarations as c
from .._native.curves import reason_text

__all__ = ["Reason"]


class Reason(IntEnum):
    """Why a curve has no value.

    Arrays hold the numbers of reasons; ``result.reason == Reason.NO_CONTACT`` compares them. ``list(Reason)`` has all.

    Examples
    --------
    >>> Reason.NOTHING_ACQUIRED.text
    'no point was acquired'
    """

    OK = c.VEL_CURVE_OK
    BAD_AXIS = c.VEL_CURVE_BAD_AXIS
    BAD_OPTIONS = c.VEL_CURVE_BAD_OPTIONS
    NOTHING_ACQUIRED = c.VEL_CURVE_NOTHING_ACQUIRED
    TOO_FEW_POINTS = c.VEL_CURVE_TOO_FEW_POINTS
    RANGE_OUTSIDE = c.VEL_CURVE_RANGE_OUTSIDE
    SATURATED = c.VEL_CURVE_SATURATED
    NO_BASELINE = c.VEL_CURVE_NO_BASELINE
    NO_CONTACT = c.VEL_CURVE_NO_CONTACT
    NO_ADHESION = c.VEL_CURVE_NO_ADHESION
    NOT_CALIBRATED = c.VEL_CURVE_NOT_CALIBRATED
    UNREADABLE = c.VEL_CURVE_UNREADABLE
    NO_FIT = 1000  # of this package alone, as fits of contact models are

    @property
    def text(self) -> str:
        """The reason in words."""
        if self is Reason.NO_FIT:
            return "the curve does not determine the modulus of the contact model"
        return reason_text(self)
