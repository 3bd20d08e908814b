"""Fits contact models to curves. It takes scipy."""

from __future__ import annotations

import math
import os
import threading
import warnings
from collections.abc import Mapping
from dataclasses import dataclass, fields, replace
from typing import TYPE_CHECKING, Any, Literal

import numpy as np
import numpy.typing as npt

from .inputs import Curves, CurvesLike
from .law import Approach, Array
from .models import CONE_POWER, SPHERE_POWER, cone_stiffness, sphere_stiffness
from .options import Options
from .quantities import adhesions, analyse, baselines, forces, indentations, shaped
from .reason import Reason
from .results import Numbers, Result, number

if TYPE_CHECKING:
    from typing_extensions import Unpack

__all__ = ["ModulusFit", "fit_modulus"]

_LEAST_POINTS = 4
_filters = threading.Lock()  # for the filters of warnings, which all threads share
_LARGEST_ERROR = 1 / 3  # of the modulus, as a part of it: one that is larger leaves it open


@dataclass(frozen=True, eq=False, repr=False)
class ModulusFit(Result):
    """A contact model that was fitted to a curve.

    Attributes
    ----------
    modulus, error : float or numpy.ndarray
        Young's modulus in pascals, and its standard error from the noise of the curve.
    scale_error : float or numpy.ndarray
        The standard error of the modulus, in pascals, that the ``errors`` of what was given make. All curves share it.
    contact : float or numpy.ndarray
        The position of the contact point in metres, which is fitted as well.
    adhesion : float or numpy.ndarray
        The adhesion in newtons, which the model "dmt" takes from the curve; 0 for other models.
    residual : float or numpy.ndarray
        The standard deviation of the forces from the model, in newtons.
    points : int or numpy.ndarray
        How many points were fitted.
    covariance : numpy.ndarray
        The covariance of the modulus and the contact point, from the noise of the curve: shape (..., 2, 2).
    """

    modulus: Numbers = number("modulus", "Pa", "Young's modulus")
    error: Numbers = number("error", "Pa", "Standard error of the modulus")
    scale_error: Numbers = number("scale_error", "Pa", "Standard error of the scale of the moduli")
    contact: Numbers = number("contact", "m", "Contact point")
    adhesion: Numbers = number("adhesion", "N", "Adhesion")
    residual: Numbers = number("residual", "N", "Standard deviation from the model")
    points: Numbers = number("points", "1", "Number of fitted points")
    covariance: Numbers = number("covariance", "", "Covariance of modulus and contact point", ("parameter", "with"))


@dataclass(frozen=True)
class Model:
    """A contact model with the numbers that it takes."""

    name: str
    poisson: float
    radius: float
    half_angle: float

    @property
    def power(self) -> float:
        return CONE_POWER if self.name == "cone" else SPHERE_POWER

    @property
    def stiffness(self) -> float:
        """The force for a modulus of 1 Pa and an indentation of 1 m."""
        if self.name == "cone":
            return cone_stiffness(self.poisson, self.half_angle)
        return sphere_stiffness(self.poisson, self.radius)

    def check(self) -> None:
        """Raises ``ValueError`` if a number is not known or not possible."""
        if self.name not in ("sphere", "cone", "dmt"):
            raise ValueError(f"model is one of 'sphere', 'cone', 'dmt', not {self.name!r}.")
        if not -1 < self.poisson <= 0.5:
            raise ValueError(f"Poisson's ratio is above -1 and at most 0.5, not {self.poisson}.")
        if self.name == "cone" and not 0 < self.half_angle < math.pi / 2:
            raise ValueError("The model 'cone' takes a half_angle between 0 and π/2.")
        if self.name != "cone" and not 0 < self.radius < math.inf:
            raise ValueError(f"The model {self.name!r} takes a radius above 0.")


@dataclass(frozen=True)
class Fit:
    """The task of fitting a model to all curves of a call."""

    curves: Curves
    options: dict[str, Any]
    model: Model
    fit_range: tuple[float, float]

    def changed(self, name: str, by: float) -> Fit:
        """The same with one of the numbers changed: of the model, or a calibration."""
        if name in ("poisson", "radius", "half_angle"):
            return replace(self, model=replace(self.model, **{name: getattr(self.model, name) + by}))
        if name not in ("sensitivity", "spring_constant"):
            raise TypeError(f"errors has {name!r}, which is no number that the modulus follows from.")
        options = {**self.options, name: self.options.get(name, math.nan) + by}
        if name == "spring_constant" and self.curves.signal_unit == "N":
            options["sensitivity"] = 1 / options[name]
        return replace(self, options=options)

    def run(self) -> dict[str, npt.NDArray[Any]]:
        """The values of all fields of a `ModulusFit`, but for the scale error."""
        count = len(self.curves.signal)
        values: dict[str, npt.NDArray[Any]] = {
            one.name: np.full(count, np.nan) for one in fields(ModulusFit) if one.name != "scale_error"
        }
        values["reason"] = np.zeros(count, np.int64)
        values["points"] = np.zeros(count, np.int64)
        values["covariance"] = np.full((count, 2, 2), np.nan)
        rows = Curves(self.curves.signal, self.curves.axes, (count,), axis_unit=self.curves.axis_unit)
        prepared = _Prepared(rows, self.options, self.model.name == "dmt")
        for row in range(count):
            found = self._fit(prepared, row)
            if isinstance(found, Reason):
                values["reason"][row] = found
            else:
                for name, value in found.items():
                    values[name][row] = value
        return values

    def _fit(self, prepared: _Prepared, row: int) -> Reason | dict[str, Any]:
        """What was found of a curve, or the reason why nothing was."""
        contact = prepared.contact(row)
        if isinstance(contact, Reason):
            return contact
        reach = float(contact.ways[-1]) if contact.ways.size else 0.0
        low, high = self.fit_range
        chosen = (low * reach <= contact.ways) & (contact.ways <= high * reach)
        if np.count_nonzero(chosen) < _LEAST_POINTS:
            return Reason.TOO_FEW_POINTS
        start = _starting(contact, self.model.power, prepared.spring)
        if start is None:
            return Reason.NO_FIT
        approach = Approach(
            contact.ways[chosen],
            contact.forces[chosen],
            start,
            self.model.power,
            prepared.spring,
            contact.adhesion,
            reach,
        )
        solved = _solved(approach, contact)
        return Reason.NO_FIT if solved is None else self._described(approach, contact, *solved)

    def _described(self, approach: Approach, contact: _Contact, parameters: Array, covariance: Array) -> dict[str, Any]:
        modulus = approach.stiffness * math.exp(parameters[0]) / self.model.stiffness
        scale = np.diag([modulus, contact.direction * approach.scale])
        deviations = approach.forces - approach.at(parameters).force
        in_units = scale @ covariance @ scale
        return {
            "modulus": modulus,
            "error": math.sqrt(in_units[0, 0]),
            "contact": contact.position + contact.direction * approach.scale * parameters[1],
            "adhesion": contact.adhesion,
            "residual": math.sqrt(float(deviations @ deviations) / (len(deviations) - 2)),
            "points": len(deviations),
            "covariance": in_units,
        }


@dataclass(frozen=True)
class _Contact:
    """The part of a curve behind the contact point, in order of the way towards the surface.

    ``baseline`` has the forces that the baseline may be wrong by at each point: one row for its offset, one for its
    tilt.
    """

    position: float
    direction: float
    ways: Array
    forces: Array
    adhesion: float
    adhesion_error: float
    baseline: Array


class _Prepared:
    """What is known of all curves before models are fitted to them one by one."""

    def __init__(self, curves: Curves, options: Mapping[str, Any], adheres: bool) -> None:
        self._curves = curves
        self._indentation = indentations(curves, options)
        self._force = forces(curves, options)
        self._baseline = baselines(curves, options)
        self._adhesion = adhesions(curves, options) if adheres else None
        self.spring = float(options.get("spring_constant", math.nan))
        self._to_force = self.spring * float(options.get("sensitivity", math.nan))

    def contact(self, row: int) -> _Contact | Reason:
        """The contact of a curve, or the reason why there is none."""
        results: list[Any] = [self._indentation, self._force, *([self._adhesion] if self._adhesion else [])]
        reason = next((Reason(one.reason[row]) for one in results if one.reason[row] != Reason.OK), None)
        if reason is not None:
            return reason
        positions = self._curves.positions(row)
        start = float(self._indentation.contact[row])
        inside = np.isfinite(self._indentation.curve[row])
        direction = math.copysign(1.0, float(positions[inside].mean()) - start)
        adhesion, error = self._pull(row)
        ways = direction * (positions - start)
        first = 0.0
        if self._adhesion is not None:
            # The tip is about to come off where it no longer indents: there the spring alone holds the adhesion.
            first = direction * (float(self._adhesion.position[row]) - start)
            start += direction * (first + adhesion / self.spring)
        chosen = np.flatnonzero((ways >= first) & np.isfinite(self._force.curve[row]))
        chosen = chosen[np.argsort(ways[chosen])]
        ways = direction * (positions[chosen] - start)
        forces = self._force.curve[row][chosen]
        return _Contact(start, direction, ways, forces, adhesion, error, self._uncertain(row, positions[chosen]))

    def _pull(self, row: int) -> tuple[float, float]:
        if self._adhesion is None:
            return 0.0, 0.0
        return float(self._adhesion.force[row]), float(self._adhesion.error[row]) * self._to_force

    def _uncertain(self, row: int, positions: Array) -> Array:
        """The standard errors of a line through evenly spread points, about the middle of these."""
        baseline = self._baseline
        noise = float(baseline.noise[row]) * self._to_force / math.sqrt(float(baseline.points[row]))
        middle = (baseline.first[row] + baseline.last[row]) / 2
        spread = abs(baseline.last[row] - baseline.first[row]) / math.sqrt(12)
        return noise * np.stack([np.ones(len(positions)), (positions - middle) / spread])


def _starting(contact: _Contact, power: float, spring: float) -> float | None:
    """About how stiff the contact is; None if nothing is indented."""
    indentations = contact.ways - contact.forces / spring
    loads = contact.forces + contact.adhesion
    good = (indentations > 0) & (loads > 0) & (contact.ways > contact.ways[-1] / 2)
    return float(np.median(loads[good] / indentations[good] ** power)) if good.any() else None


def _solved(approach: Approach, contact: _Contact) -> tuple[Array, Array] | None:
    """The parameters with their covariance, or None if the curve does not determine them."""
    from scipy.optimize import OptimizeWarning, curve_fit

    with _filters, warnings.catch_warnings():
        warnings.simplefilter("ignore", OptimizeWarning)  # of covariances that are infinite, which are looked at
        try:
            parameters, covariance = curve_fit(
                approach.model, approach.ways, approach.forces, p0=[0.0, 0.0], jac=approach.jacobian, method="lm"
            )
        except RuntimeError:  # no convergence
            return None
    if not np.isfinite(covariance).all():
        return None
    covariance = covariance + _shared(approach, contact, parameters)
    return (parameters, covariance) if covariance[0, 0] < _LARGEST_ERROR**2 else None


def _shared(approach: Approach, contact: _Contact, parameters: Array) -> Array:
    """The covariance of the parameters from errors that all points share: those of the baseline and the adhesion."""
    by_adhesion = approach.at(parameters).by_adhesion * contact.adhesion_error
    first = np.searchsorted(contact.ways, approach.ways[0])
    baseline = contact.baseline[:, first : first + len(approach.ways)]
    shifts = np.linalg.pinv(approach.jacobian(approach.ways, *parameters)) @ np.vstack([baseline, by_adhesion]).T
    covariance: Array = shifts @ shifts.T
    return covariance


def fit_modulus(
    curves: CurvesLike,
    model: Literal["sphere", "cone", "dmt"],
    *,
    poisson: float,
    radius: float = math.nan,
    half_angle: float = math.nan,
    fit_range: tuple[float, float] = (0.0, 1.0),
    errors: Mapping[str, float] | None = None,
    x: npt.ArrayLike | None = None,
    **options: Unpack[Options],
) -> Any:
    """Fits a contact model to each curve, which gives Young's modulus of what is indented.

    The baseline and a first contact point are found as by `baseline` and `contact_point`. Behind it, modulus and
    contact point are fitted by least squares to the force over the position, where spring and surface balance. The
    position is known exactly, while the indentation has the noise of the force. The error of the modulus has those of
    the baseline and of the adhesion, besides that of the fit.

    Parameters
    ----------
    curves, x, **options
        As for `slope`. Sensitivity, spring constant and positions in metres are needed. Curves of the way to the
        surface suit "sphere" and "cone", those of the way back "dmt".
    model
        "sphere" (`hertz_sphere`), "cone" (`hertz_cone`), or "dmt" (`dmt`), which takes the adhesion from the curve and
        is fitted from its minimum on.
    poisson
        Poisson's ratio of what is indented.
    radius
        The radius of the tip in metres, for "sphere" and "dmt".
    half_angle
        The angle between the axis and the side of the tip in radians, for "cone".
    fit_range
        The first and the last part of the way behind the contact point that is fitted, as shares of it.
    errors
        Standard errors of some of "radius", "half_angle", "poisson", "sensitivity" and "spring_constant", in their
        units. What they make of the modulus is the scale error.

    Returns
    -------
    ModulusFit or xarray.Dataset
        As for `slope`. There is no value where `indentation`, `force` or, for "dmt", `adhesion` has none; with
        fewer than 4 points in the range; and where the curve does not determine the modulus, since its error would be
        more than a third of it, as on a surface that is much stiffer than the spring.

    Raises
    ------
    TypeError, ValueError
        as `slope` does, and if the model lacks a number.
    ImportError
        if scipy is missing.

    Examples
    --------
    >>> from veloxd.curves import hertz_sphere
    >>> indentations = np.linspace(0, 200e-9, 2000)
    >>> forces = hertz_sphere(indentations, modulus=2e6, poisson=0.5, radius=1e-6)
    >>> z = np.linspace(-400e-9, 400e-9, 512)
    >>> deflections = np.interp(z, indentations + forces / 0.5, forces / 0.5)
    >>> fit = fit_modulus(deflections, "sphere", x=z, poisson=0.5, radius=1e-6, sensitivity=1, spring_constant=0.5)
    >>> f"{fit.modulus / 1e6:.3f} MPa"
    '2.000 MPa'
    """
    tip = Model(model, poisson, radius, half_angle)
    tip.check()
    low, high = fit_range
    if not 0 <= low < high <= 1:
        raise ValueError(f"fit_range is two shares from 0 to 1 in rising order, not {fit_range}.")

    def compute(found: Curves, known: dict[str, Any]) -> ModulusFit:
        known.setdefault("law", "cone" if model == "cone" else "sphere")
        fit = Fit(found, known, tip, (low, high))
        values = fit.run()
        changes = [fit.changed(name, by).run()["modulus"] - values["modulus"] for name, by in (errors or {}).items()]
        scale_error = np.sqrt(np.sum(np.square(changes), axis=0)) if changes else 0.0
        return shaped(ModulusFit, found, {**values, "scale_error": scale_error + 0 * values["modulus"]})

    return analyse(curves, x, options, compute)


def _unlock_in_child() -> None:
    """A child has none of the other threads of its parent, one of which may have held the lock."""
    global _filters
    _filters = threading.Lock()


if hasattr(os, "register_at_fork"):
    os.register_at_fork(after_in_child=_unlock_in_child)
