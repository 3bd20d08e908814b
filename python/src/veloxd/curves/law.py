"""The force over the way of the piezo, as a contact model and a cantilever make it, and its derivatives.

Fits compare forces at equal positions, which are known exactly. The indentation is not: it is the way minus the
deflection, so that it has the noise of the force.
"""

from __future__ import annotations

from dataclasses import dataclass
from typing import Any

import numpy as np
import numpy.typing as npt

Array = npt.NDArray[np.float64]

_MOST_STEPS = 60


@dataclass(frozen=True)
class Equilibrium:
    """Where spring and surface balance: stiffness × indentation^power - adhesion = spring × deflection.

    For each point, the force with its partial derivatives.
    """

    force: Array
    by_way: Array
    by_stiffness: Array
    by_adhesion: Array


def equilibrium(way: Array, stiffness: float, power: float, spring: float, adhesion: float = 0.0) -> Equilibrium:
    """The force after the piezo has gone the given ways behind the contact point, with its partial derivatives.

    Ahead of contact, the force is that of no indentation.
    """
    pull = np.maximum(spring * way + adhesion, 0)
    indentation = _solve(pull, stiffness, power, spring)
    growth = stiffness * power * indentation ** (power - 1)
    share = spring / (growth + spring)
    force = stiffness * indentation**power
    return Equilibrium(force - adhesion, growth * share, share * indentation**power, -share)


def _solve(pull: Array, stiffness: float, power: float, spring: float) -> Array:
    """Solves stiffness × indentation^power + spring × indentation = pull by Newton's method.

    The left side is convex and rises, and the start is not below the solution, so that steps never pass it.
    """
    indentation: Array = np.minimum(pull / spring, (pull / stiffness) ** (1 / power))
    for _ in range(_MOST_STEPS):
        excess = stiffness * indentation**power + spring * indentation - pull
        step = excess / (stiffness * power * indentation ** (power - 1) + spring)
        indentation = np.maximum(indentation - step, 0)
        if (np.abs(step) <= 1e-15 * indentation).all():
            break
    return indentation


@dataclass(frozen=True)
class Approach:
    """The points of one curve that a model is fitted to, behind the contact point where ``ways`` are 0.

    The two parameters are the logarithm of the ratio of the stiffness to ``stiffness``, so that it stays above 0, and
    the shift of the contact point towards the surface, in units of ``scale``.
    """

    ways: Array
    forces: Array
    stiffness: float
    power: float
    spring: float
    adhesion: float
    scale: float

    def at(self, parameters: Any) -> Equilibrium:
        """The model at each point."""
        logarithm, shift = parameters
        stiffness = self.stiffness * float(np.exp(np.clip(logarithm, -50, 50)))
        ways = self.ways - shift * self.scale
        return equilibrium(ways, stiffness, self.power, self.spring, self.adhesion)

    def model(self, _: Array, *parameters: float) -> Array:
        """The forces, as scipy calls it."""
        return self.at(parameters).force

    def jacobian(self, _: Array, *parameters: float) -> Array:
        """The derivatives of the forces by the parameters, of shape (points, 2)."""
        found = self.at(parameters)
        stiffness = self.stiffness * np.exp(np.clip(parameters[0], -50, 50))
        return np.stack([found.by_stiffness * stiffness, -found.by_way * self.scale], axis=1)
