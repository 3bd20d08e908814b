"""What is known of curves once they were analysed."""

from __future__ import annotations

from dataclasses import dataclass, field, fields
from typing import Any, TypeVar

import numpy as np
import numpy.typing as npt

from .reason import Reason

__all__ = ["Adhesion", "Baseline", "ContactPoint", "Force", "Indentation", "Result", "Slope"]

R = TypeVar("R", bound="Result")

# A number for a single curve, or an array with one for each of several.
Numbers = Any


def number(member: str, unit: str, long_name: str, dims: tuple[str, ...] = ()) -> Any:
    """A field of a result: its name in the library, its unit and its name in words, and dimensions of its own.

    In the unit, "signal" and "axis" stand for those of the curves. The dimension "points" is that of their points.
    """
    return field(metadata={"member": member, "unit": unit, "long_name": long_name, "dims": dims})


@dataclass(frozen=True, eq=False, repr=False)
class Result:
    """What was found of one curve, or of several: then each attribute is an array of the shape of the curves.

    Where a curve has no value, its numbers are NaN, its counts 0, and ``reason`` says why.

    Attributes
    ----------
    reason : Reason or numpy.ndarray
        `Reason.OK` where there is a value. Arrays hold the numbers of the reasons.
    """

    reason: Numbers = number("reason", "", "Reason why there is no value")

    @property
    def ok(self) -> Any:
        """Whether there is a value: a bool, or an array of them."""
        return self.reason == Reason.OK

    @property
    def reason_text(self) -> Any:
        """The reason in words: a text, or an array of them."""
        if isinstance(self.reason, Reason):
            return self.reason.text
        return np.vectorize(lambda reason: Reason(reason).text, otypes=[object])(self.reason)

    def __repr__(self) -> str:
        if isinstance(self.reason, Reason):
            shown = ", ".join(f"{one.name}={getattr(self, one.name)!r}" for one in fields(self))
            return f"{type(self).__name__}({shown})"
        count = f"{self.reason.size} curves, {np.count_nonzero(self.ok)} with a value"
        return f"<veloxd.curves.{type(self).__name__} of {count}>"


@dataclass(frozen=True, eq=False, repr=False)
class Slope(Result):
    """The least-squares straight line through a curve.

    Attributes
    ----------
    value, error : float or numpy.ndarray
        The slope and its standard error, in signal per unit of the axis.
    intercept : float or numpy.ndarray
        The signal of the line at position 0.
    residual : float or numpy.ndarray
        The standard deviation of the points from the line.
    points : int or numpy.ndarray
        How many points were fitted.
    """

    value: Numbers = number("slope", "signal/axis", "Slope")
    error: Numbers = number("error", "signal/axis", "Standard error of the slope")
    intercept: Numbers = number("intercept", "signal", "Signal at position 0")
    residual: Numbers = number("residual", "signal", "Standard deviation from the line")
    points: Numbers = number("points", "1", "Number of fitted points")


@dataclass(frozen=True, eq=False, repr=False)
class Baseline(Result):
    """The straight line on which the signal lies while the tip is away from the surface.

    Attributes
    ----------
    offset, tilt : float or numpy.ndarray
        The signal of the line at position 0, and its slope in signal per unit of the axis.
    noise : float or numpy.ndarray
        The standard deviation of the signal from the line.
    first, last : float or numpy.ndarray
        The positions of the first and the last point that was looked at.
    points : int or numpy.ndarray
        How many points were fitted.
    """

    offset: Numbers = number("offset", "signal", "Signal of the baseline at position 0")
    tilt: Numbers = number("tilt", "signal/axis", "Slope of the baseline")
    noise: Numbers = number("noise", "signal", "Standard deviation from the baseline")
    first: Numbers = number("from", "axis", "First position of the range of the baseline")
    last: Numbers = number("to", "axis", "Last position of the range of the baseline")
    points: Numbers = number("points", "1", "Number of fitted points")

    def at(self, x: npt.ArrayLike) -> npt.NDArray[np.float64]:
        """The signal of the line at positions of shape (points,): shape (points,), or (curves, points)."""
        rise = np.multiply.outer(self.tilt, np.asarray(x, dtype=float))
        line: npt.NDArray[np.float64] = rise + np.asarray(self.offset)[..., np.newaxis]
        return line


@dataclass(frozen=True, eq=False, repr=False)
class ContactPoint(Result):
    """The position at which the tip touches the surface without being bent.

    Attributes
    ----------
    position, error : float or numpy.ndarray
        The position in the unit of the axis, and its standard error.
    crossing : float or numpy.ndarray
        Where the signal crosses the threshold.
    slope : float or numpy.ndarray
        The slope behind the contact point, in signal per unit of the axis towards the surface.
    points : int or numpy.ndarray
        How many points were fitted.
    """

    position: Numbers = number("position", "axis", "Contact point")
    error: Numbers = number("error", "axis", "Standard error of the contact point")
    crossing: Numbers = number("crossing", "axis", "Position at the threshold")
    slope: Numbers = number("slope", "signal/axis", "Slope behind the contact point")
    points: Numbers = number("points", "1", "Number of fitted points")


@dataclass(frozen=True, eq=False, repr=False)
class Adhesion(Result):
    """How far the tip is pulled below the baseline before it comes off.

    Attributes
    ----------
    value, error : float or numpy.ndarray
        Baseline minus minimum, and its standard error, in the unit of the signal.
    position : float or numpy.ndarray
        The position of the minimum, in the unit of the axis.
    index : int or numpy.ndarray
        The index of the minimum.
    deflection : float or numpy.ndarray
        The adhesion as a deflection in metres; NaN without a sensitivity.
    force : float or numpy.ndarray
        The adhesion in newtons; NaN without a spring constant, too.
    """

    value: Numbers = number("signal", "signal", "Maximum adhesion")
    error: Numbers = number("error", "signal", "Standard error of the adhesion")
    position: Numbers = number("position", "axis", "Position of the minimum")
    index: Numbers = number("index", "1", "Index of the minimum")
    deflection: Numbers = number("deflection", "m", "Adhesion as a deflection")
    force: Numbers = number("force", "N", "Adhesion as a force")


@dataclass(frozen=True, eq=False, repr=False)
class Indentation(Result):
    """How far the tip goes into the surface.

    Attributes
    ----------
    value, error : float or numpy.ndarray
        The largest indentation and its standard error, in metres.
    position, deflection, force : float or numpy.ndarray
        Where it is, and the deflection in metres and the force in newtons there; without a spring constant, the force
        is NaN.
    index : int or numpy.ndarray
        The index of the point.
    contact : float or numpy.ndarray
        The position of the contact point.
    curve : numpy.ndarray
        The indentation of every point in metres, of the shape of the curves; NaN ahead of the contact point and where
        nothing was acquired.
    """

    value: Numbers = number("largest", "m", "Largest indentation")
    error: Numbers = number("error", "m", "Standard error of the indentation")
    position: Numbers = number("position", "m", "Position of the largest indentation")
    deflection: Numbers = number("deflection", "m", "Deflection at the largest indentation")
    force: Numbers = number("force", "N", "Force at the largest indentation")
    index: Numbers = number("index", "1", "Index of the largest indentation")
    contact: Numbers = number("contact", "m", "Contact point")
    curve: Numbers = number("curve", "m", "Indentation", ("points",))


@dataclass(frozen=True, eq=False, repr=False)
class Force(Result):
    """The force at every point.

    Attributes
    ----------
    curve : numpy.ndarray
        The force in newtons, above 0 where the surface pushes, of the shape of the curves; NaN where nothing was
        acquired.
    """

    curve: Numbers = number("curve", "N", "Force", ("points",))
