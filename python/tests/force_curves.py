"""Force curves whose truth is known."""

from __future__ import annotations

from pathlib import Path
from typing import Any

import numpy as np
import numpy.typing as npt

import veloxd
from veloxd.curves import dmt, hertz_cone

Z = np.linspace(0, 400e-9, 512)
SPRING = 0.2  # N/m
SENSITIVITY = 50e-9  # m/V
CONTACT = 280e-9
ADHESION = 30e-9  # m
NOISE = 0.1e-9  # m
CALIBRATED: dict[str, Any] = {"sensitivity": 1.0, "spring_constant": SPRING}


def noise(count: int, seed: int = 1) -> npt.NDArray[np.float64]:
    return NOISE * np.random.default_rng(seed).standard_normal((count, Z.size))


def approach(count: int = 1, seed: int = 1) -> npt.NDArray[np.float64]:
    """Deflections on the way to a hard surface, over a tilted baseline."""
    return np.maximum(Z - CONTACT, 0) + 0.005 * Z + noise(count, seed)


def retract(count: int = 1) -> npt.NDArray[np.float64]:
    """Deflections on the way back from it: the tip sticks until it is pulled far enough."""
    return np.where(Z >= CONTACT - ADHESION, Z - CONTACT, 0) + 0.005 * Z + noise(count)


def elastic(model: str, modulus: float, count: int = 1, seed: int = 1) -> npt.NDArray[np.float64]:
    """Deflections on an elastic body. Each of many indentations has a force, which tells where the piezo is."""
    indentations = np.linspace(0, 200e-9, 40_000)
    if model == "cone":
        forces = hertz_cone(indentations, modulus, 0.5, 0.4)
    else:
        forces = dmt(indentations, modulus, 0.5, 1e-6, 2e-9 if model == "dmt" else 0.0)
    deflections = forces / SPRING
    return np.interp(Z, CONTACT + indentations + deflections, deflections, left=0) + noise(count, seed)


def write_curves(path: Path, deflections: npt.NDArray[np.float64], bits: int = 32) -> None:
    """A file of curves in volts over nanometres, with what is known of its cantilever."""
    with veloxd.create(path) as file:
        group = file.create_group("Curves", bits=bits, slots=1)
        x = {"name": "Z", "unit": "nm", "range": 1e9 * float(Z[-1])}
        group.create_channel("Deflection", deflections / SENSITIVITY * 1e3, unit="mV", limits=(-4000, 4000), x=x)
        file.info = {"Tool": {"Spring constant": "200 mN/m", "Deflection sensitivity": "50 nm/V"}}
        file.save()
