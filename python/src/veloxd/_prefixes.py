"""SI prefixes of units."""

from __future__ import annotations

import math
import re

# Units that take a prefix. Others, such as degrees and counts, are left as they are.
_UNITS = frozenset(("m", "s", "A", "V", "N", "Hz", "W", "J", "K", "C", "F", "T", "S", "H", "Pa", "Ω", "eV"))

_EXPONENTS = {
    "y": -24, "z": -21, "a": -18, "f": -15, "p": -12, "n": -9, "µ": -6, "μ": -6, "u": -6, "m": -3,
    "k": 3, "M": 6, "G": 9, "T": 12, "P": 15, "E": 18, "Z": 21, "Y": 24,
}  # fmt: skip
_PREFIXES = {exponent: prefix for prefix, exponent in reversed(list(_EXPONENTS.items()))}

# A unit with a power is none of them: its prefix would have the power, too.
_FIRST_UNIT = re.compile(r"[^\W\d_]+(?![^\W_]|\s*(?:\^|\*\*))")


def without_prefix(unit: str) -> tuple[float, str]:
    """The factor that the prefix of the first unit stands for, and the unit without it: 1e-9 and "m/V" for "nm/V".

    A unit with a power, such as "nm^2", is left as it is.
    """
    found = _FIRST_UNIT.match(unit)
    first = found.group() if found else ""
    if first in _UNITS or first[:1] not in _EXPONENTS or first[1:] not in _UNITS:
        return 1.0, unit
    return float(f"1e{_EXPONENTS[first[0]]}"), unit[1:]


def suitable(largest: float, unit: str) -> tuple[float, str]:
    """A factor and a unit with a prefix, so that values up to ``largest`` times the factor are good to read."""
    if unit not in _UNITS or not math.isfinite(largest) or largest == 0:
        return 1.0, unit
    exponent = 3 * math.floor(math.log10(abs(largest)) / 3)
    exponent = max(-24, min(24, exponent))
    if exponent == 0:
        return 1.0, unit
    return float(f"1e{-exponent}"), _PREFIXES[exponent] + unit
