"""The quantities of curves that the library computes."""

from __future__ import annotations

from collections.abc import Callable, Mapping
from dataclasses import fields
from typing import TYPE_CHECKING, Any, Protocol, TypeVar, cast, overload

import numpy as np
import numpy.typing as npt

from .._native import curve_declarations as c
from .._native.curves import Rows
from .inputs import Curves, CurvesLike, curves_of
from .options import Options, native
from .reason import Reason
from .results import Adhesion, Baseline, ContactPoint, Force, Indentation, R, Slope

if TYPE_CHECKING:
    import xarray as xr
    from typing_extensions import Unpack

__all__ = ["adhesion", "baseline", "contact_point", "force", "indentation", "slope"]

S = TypeVar("S", covariant=True)


class Analysis(Protocol[S]):
    """A function that analyses curves: labelled ones give a data set, others a result of their own."""

    @overload
    def __call__(
        self, curves: xr.DataArray, *, x: npt.ArrayLike | None = None, **options: Unpack[Options]
    ) -> xr.Dataset: ...

    @overload
    def __call__(self, curves: CurvesLike, *, x: npt.ArrayLike | None = None, **options: Unpack[Options]) -> S: ...


def _giving(kind: type[R]) -> Callable[[Callable[..., Any]], Analysis[R]]:
    """Declares what a function gives."""
    return lambda function: cast("Analysis[R]", function)


@_giving(Slope)
def slope(curves: CurvesLike, *, x: npt.ArrayLike | None = None, **options: Unpack[Options]) -> Any:
    """Fits a straight line by least squares, within ``slope_range`` if it is given.

    Parameters
    ----------
    curves
        An array of shape (points,), (curves, points) or (..., points); a channel; or an ``xarray.DataArray``, whose
        last dimension runs along the points. NaN stands for points that were not acquired. Signals and positions of
        channels and labelled arrays are taken in units without SI prefixes, such as m for nm.
    x
        The positions of the points: evenly spaced numbers of shape (points,), or of the shape of the curves, in SI
        units without prefixes, such as metres. A labelled array of positions is taken in its ``units``. Channels and
        labelled arrays of curves know their own.
    **options
        What is known of the curves and how to analyse them: see `Options`. A channel tells the ends and the resolution
        of its signal axis, and the items "Spring constant" and "Deflection sensitivity" of the group "Tool" of its
        measurement information are used. Labelled arrays tell the same by their attributes. A signal in metres needs no
        sensitivity, and one in newtons none besides the spring constant.

    Returns
    -------
    Slope or xarray.Dataset
        For one curve a `Slope` of scalars, for several one of arrays, for labelled arrays a data set of such arrays.
        A curve of which fewer than 4 points are in the range has no value.

    Raises
    ------
    TypeError
        if the values are no real numbers, their positions are not known, or there is no such option.
    ValueError
        if positions are not evenly spaced, or an option is outside of its bounds.

    Examples
    --------
    >>> line = slope([3.0, 5.0, 7.0, 9.0], x=[0, 1, 2, 3])
    >>> line.value, line.intercept, line.reason
    (2.0, 3.0, <Reason.OK: 0>)
    """
    return analyse(curves, x, options, slopes)


@_giving(Baseline)
def baseline(curves: CurvesLike, *, x: npt.ArrayLike | None = None, **options: Unpack[Options]) -> Any:
    """Finds the straight line on which the signal lies away from the surface, and the noise about it.

    Arguments, results and errors are as for `slope`; the result is a `Baseline`, or a data set of the same. It needs at
    least 16 points, and up to three eighths of the range may be off the line.
    """
    return analyse(curves, x, options, baselines)


@_giving(ContactPoint)
def contact_point(curves: CurvesLike, *, x: npt.ArrayLike | None = None, **options: Unpack[Options]) -> Any:
    """Finds the position at which the tip touches the surface, where ``law`` reaches the baseline.

    Arguments, results and errors are as for `slope`; the result is a `ContactPoint`, or a data set of the same. The
    laws of a sphere and a cone take the sensitivity, and positions in metres.
    """
    return analyse(curves, x, options, contacts)


@_giving(Adhesion)
def adhesion(curves: CurvesLike, *, x: npt.ArrayLike | None = None, **options: Unpack[Options]) -> Any:
    """Finds how far the tip is pulled below the baseline before it comes off. For retract curves.

    Arguments, results and errors are as for `slope`; the result is an `Adhesion`, or a data set of the same.
    """
    return analyse(curves, x, options, adhesions)


@_giving(Indentation)
def indentation(curves: CurvesLike, *, x: npt.ArrayLike | None = None, **options: Unpack[Options]) -> Any:
    """Finds how far the tip goes into the surface: the way behind the contact point minus the deflection.

    Arguments, results and errors are as for `slope`; the result is an `Indentation`, or a data set of the same. It
    takes the sensitivity, and positions in metres.
    """
    return analyse(curves, x, options, indentations)


@_giving(Force)
def force(curves: CurvesLike, *, x: npt.ArrayLike | None = None, **options: Unpack[Options]) -> Any:
    """Makes forces of signals: signal minus baseline, times sensitivity and spring constant.

    Arguments, results and errors are as for `slope`; the result is a `Force`, or a data set of the same. It takes the
    sensitivity and the spring constant.
    """
    return analyse(curves, x, options, forces)


def analyse(
    curves: CurvesLike,
    x: npt.ArrayLike | None,
    given: Mapping[str, Any],
    compute: Callable[[Curves, dict[str, Any]], R],
) -> Any:
    """What ``compute`` makes of curves and of all options that are known, in the form that suits these curves."""
    found = curves_of(curves, x)
    result = compute(found, found.options(given))
    if found.origin is None:
        return result
    from .labelled import dataset

    return dataset(result, found)


def slopes(curves: Curves, options: Mapping[str, Any]) -> Slope:
    """The slope of each curve."""
    return _computed(Slope, curves, options, "VELCurveSlopes", c.VELSlope)


def baselines(curves: Curves, options: Mapping[str, Any]) -> Baseline:
    """The baseline of each curve."""
    return _computed(Baseline, curves, options, "VELCurveBaselines", c.VELBaseline)


def contacts(curves: Curves, options: Mapping[str, Any]) -> ContactPoint:
    """The contact point of each curve."""
    if options.get("law", "line") != "line":
        curves.require_metres()
    return _computed(ContactPoint, curves, options, "VELCurveContacts", c.VELContact)


def adhesions(curves: Curves, options: Mapping[str, Any]) -> Adhesion:
    """The adhesion of each curve."""
    return _computed(Adhesion, curves, options, "VELCurveAdhesions", c.VELAdhesion)


def indentations(curves: Curves, options: Mapping[str, Any]) -> Indentation:
    """The indentation of each curve."""
    curves.require_metres()
    every_point = np.empty(curves.signal.shape)
    return _computed(Indentation, curves, options, "VELCurveIndentations", c.VELIndentation, curve=every_point)


def forces(curves: Curves, options: Mapping[str, Any]) -> Force:
    """The force at each point of each curve."""
    every_point = np.empty(curves.signal.shape)
    return _computed(Force, curves, options, "VELCurveForces", None, curve=every_point)


def _computed(
    kind: type[R],
    curves: Curves,
    options: Mapping[str, Any],
    function: str,
    structure: Any,
    **every_point: npt.NDArray[np.float64],
) -> R:
    """Calls a function of the library for all rows. ``structure`` is that of its results, None if they are reasons."""
    members = np.dtype(structure) if structure else np.dtype([("reason", np.int64)])
    records = np.zeros(len(curves.signal), members)
    made = native(options)
    for rows, start, step in curves.runs():
        block = Rows(curves.signal[rows], start, step)
        if not block.compute(function, made, records[rows], *(one[rows] for one in every_point.values())):
            shown = ", ".join(f"{name}={value!r}" for name, value in options.items())
            raise ValueError(f"An option is outside of its bounds: {shown}.")
    return shaped(kind, curves, {**{str(name): records[name] for name in members.names or ()}, **every_point})


def shaped(kind: type[R], curves: Curves, values: Mapping[str, npt.NDArray[Any]]) -> R:
    """A result of the shape of the curves, of the values of its fields by their names in the library."""
    shown = {one.name: _shaped(values[one.metadata["member"]], curves.shape) for one in fields(kind)}
    if not curves.shape:
        shown["reason"] = Reason(shown["reason"])
    return kind(**shown)


def _shaped(values: npt.NDArray[Any], shape: tuple[int, ...]) -> Any:
    """The values as an array with a sign, of which differences are what one expects; as a number if it is one."""
    signed = values.astype(np.int64) if values.dtype == np.uint64 else values
    whole = signed.reshape((*shape, *values.shape[1:]))
    return whole if whole.shape else whole.item()
