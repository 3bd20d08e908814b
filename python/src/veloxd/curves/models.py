"""How the force between a tip and an elastic body grows with the indentation.

All numbers are in SI units: lengths in metres, moduli in pascals, forces in newtons, angles in radians.
"""

from __future__ import annotations

import math

import numpy as np
import numpy.typing as npt

__all__ = ["dmt", "hertz_cone", "hertz_sphere"]

SPHERE_POWER = 1.5
CONE_POWER = 2.0


def sphere_stiffness(poisson: float, radius: float) -> float:
    """The force of a sphere for a modulus of 1 Pa and an indentation of 1 m."""
    return 4 / 3 / (1 - poisson**2) * math.sqrt(radius)


def cone_stiffness(poisson: float, half_angle: float) -> float:
    """The force of a cone for a modulus of 1 Pa and an indentation of 1 m."""
    return 2 / math.pi / (1 - poisson**2) * math.tan(half_angle)


def hertz_sphere(indentation: npt.ArrayLike, modulus: float, poisson: float, radius: float) -> npt.NDArray[np.float64]:
    """The force of a sphere: F = 4/3 E / (1 - ν²) √R δ^(3/2).

    H. Hertz, J. reine angew. Math. 92, 156 (1882). It holds for indentations that are small against the radius, without
    adhesion, and for a tip that is much stiffer than the body.

    Parameters
    ----------
    indentation
        Indentations δ in metres, of any shape. Where they are negative, there is no contact, and no force.
    modulus, poisson, radius
        Young's modulus E of the body in pascals, its Poisson's ratio ν, and the radius R of the sphere in metres.

    Returns
    -------
    numpy.ndarray
        Forces in newtons, of the shape of ``indentation``.

    Examples
    --------
    >>> f"{hertz_sphere(100e-9, modulus=1e6, poisson=0.5, radius=1e-6):.3g} N"
    '5.62e-08 N'
    """
    return _power_law(indentation, sphere_stiffness(poisson, radius) * modulus, SPHERE_POWER)


def hertz_cone(
    indentation: npt.ArrayLike, modulus: float, poisson: float, half_angle: float
) -> npt.NDArray[np.float64]:
    """The force of a cone: F = 2/π E / (1 - ν²) tan α δ².

    I. N. Sneddon, Int. J. Eng. Sci. 3, 47 (1965). ``half_angle`` is the angle α between the axis of the cone and its
    side, in radians. All else is as for `hertz_sphere`.
    """
    return _power_law(indentation, cone_stiffness(poisson, half_angle) * modulus, CONE_POWER)


def dmt(
    indentation: npt.ArrayLike, modulus: float, poisson: float, radius: float, adhesion: float
) -> npt.NDArray[np.float64]:
    """The force of a sphere that adheres: F = 4/3 E / (1 - ν²) √R δ^(3/2) - Fa.

    B. V. Derjaguin, V. M. Muller, Yu. P. Toporov, J. Colloid Interface Sci. 53, 314 (1975). ``adhesion`` is the force
    Fa in newtons that pulls the tip off, 2 π R times the work of adhesion. The model describes contact only: forces at
    negative indentations are NaN. All else is as for `hertz_sphere`.
    """
    force = hertz_sphere(indentation, modulus, poisson, radius) - adhesion
    return np.where(np.asarray(indentation) < 0, np.nan, force)


def _power_law(indentation: npt.ArrayLike, stiffness: float, power: float) -> npt.NDArray[np.float64]:
    force: npt.NDArray[np.float64] = stiffness * np.maximum(np.asarray(indentation, dtype=float), 0) ** power
    return force
