"""Units without SI prefixes."""

from __future__ import annotations

from typing import Any

import numpy.typing as npt

from .._prefixes import without_prefix


def base(unit: str) -> tuple[float, str]:
    """The factor that the prefixes of a unit stand for, and the unit without them: 1e-9 and "m/V" for "nm/V"."""
    parts = [without_prefix(part.strip()) for part in unit.split("/")]
    factor = parts[0][0]
    for divisor, _ in parts[1:]:
        factor /= divisor
    return factor, "/".join(name for _, name in parts)


def in_base(values: npt.NDArray[Any], unit: str) -> tuple[npt.NDArray[Any], str]:
    """The values in their unit without prefixes, and that unit. They are not copied if there is no prefix."""
    factor, name = base(unit)
    if factor == 1:
        return values, name
    # Division by a power of ten is exact where multiplication by its inverse is not.
    return (values * factor if factor > 1 else values / round(1 / factor)), name


def combined(pattern: str, signal: str, axis: str) -> str:
    """A unit such as "signal/axis", with what stands for its parts; "" where one of them is not known."""
    known = {"signal": signal, "axis": axis}
    parts = [known.get(part, part) for part in pattern.split("/")]
    if not all(parts):
        return ""
    return "1" if len(parts) == 2 and parts[0] == parts[1] else "/".join(parts)
