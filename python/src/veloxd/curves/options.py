"""What a caller can say of curves, and how to analyse them."""

from __future__ import annotations

import difflib
from collections.abc import Mapping
from typing import Any, Literal, TypedDict

from .._native import curve_declarations as c
from .._native.curves import default_options

__all__ = ["Options"]

Pair = tuple[float, float]


class Options(TypedDict, total=False):
    """Keyword arguments of all functions that analyse curves; each uses those that it needs.

    Lengths are in metres, signals in the unit of the signal, without SI prefixes. The defaults suit a curve whose
    signal rises when the tip presses on the surface, and of which nothing else is known.

    Attributes
    ----------
    slope_range : tuple of float
        The positions between which the slope is fitted, in either order. Without it, the whole curve.
    surface : {"from data", "high", "low"}
        At which end of the axis the surface is: at high or low positions, or, by default, where the signal varies more.
    repulsion : {"raises", "lowers"}
        What happens to the signal when the surface pushes the tip away.
    law : {"line", "sphere", "cone"}
        How the signal grows behind the contact point: as the position on a hard surface, or as that power of the
        indentation with which a sphere or a cone indents an elastic one, which takes the sensitivity.
    baseline_range : tuple of float
        The positions between which the baseline is looked for, instead of ``baseline_share``.
    baseline_share : float
        The share of the curve, at the end away from the surface, in which the baseline is looked for; 0.4.
    threshold : float
        How many noise widths a signal must be from the baseline not to belong to it; 5.
    signal_step : float
        The smallest difference of signals: their noise is at least that divided by the root of 12; 0.
    fit_share : float
        The share of the points behind the contact that ``law`` is fitted to; 0.5.
    limits : tuple of float
        The lowest and the highest signal: one at or beyond either of them is saturated. None by default.
    sensitivity : float
        Metres of deflection for a unit of the signal: 1 if it is a deflection in metres.
    spring_constant : float
        Newtons for a metre of deflection.
    """

    slope_range: Pair
    surface: Literal["from data", "high", "low"]
    repulsion: Literal["raises", "lowers"]
    law: Literal["line", "sphere", "cone"]
    baseline_range: Pair
    baseline_share: float
    threshold: float
    signal_step: float
    fit_share: float
    limits: Pair
    sensitivity: float
    spring_constant: float


_CHOICES: dict[str, dict[str, int]] = {
    "surface": {
        "from data": c.VEL_SURFACE_FROM_DATA,
        "high": c.VEL_SURFACE_AT_HIGH_POSITIONS,
        "low": c.VEL_SURFACE_AT_LOW_POSITIONS,
    },
    "repulsion": {"raises": c.VEL_REPULSION_RAISES_SIGNAL, "lowers": c.VEL_REPULSION_LOWERS_SIGNAL},
    "law": {"line": c.VEL_LAW_LINE, "sphere": c.VEL_LAW_SPHERE, "cone": c.VEL_LAW_CONE},
}
_PAIRS = {
    "slope_range": ("slope_from", "slope_to"),
    "baseline_range": ("baseline_from", "baseline_to"),
    "limits": ("lowest_signal", "highest_signal"),
}


def native(options: Mapping[str, Any]) -> c.VELCurveOptions:
    """The options as the library takes them; raises ``TypeError`` or ``ValueError`` for what is none."""
    made = default_options()
    for name, value in options.items():
        if name not in Options.__annotations__:
            similar = difflib.get_close_matches(name, Options.__annotations__, 1)
            hint = f"; did you mean {similar[0]!r}?" if similar else "."
            raise TypeError(f"There is no option {name!r}{hint}")
        for member, number in _members(name, value):
            setattr(made, member, number)
    return made


def _members(name: str, value: Any) -> list[tuple[str, Any]]:
    """The members of the library's structure that an option stands for, with their values."""
    if name in _PAIRS:
        first, second = value
        return [(_PAIRS[name][0], float(first)), (_PAIRS[name][1], float(second))]
    if name not in _CHOICES:
        return [(name, float(value))]
    if value not in _CHOICES[name]:
        raise ValueError(f"{name} is one of {', '.join(map(repr, _CHOICES[name]))}, not {value!r}.")
    return [(name, _CHOICES[name][value])]
