"""Numbers with units, as the measurement information spells them."""

from __future__ import annotations

import re
from typing import TYPE_CHECKING, Any, NamedTuple

from ._prefixes import without_prefix

if TYPE_CHECKING:
    import pint

__all__ = ["Quantity"]

# A number is decimal: "0x10" is not 0 of the unit "x10".
_NUMBER = r"(?![+-]?0(?:[xX][0-9a-fA-F]|[bBoO]\d))([+-]?(?:\d+\.?\d*|\.\d+)(?:[eE][+-]?\d+)?)"
_TEXT = re.compile(rf"\s*{_NUMBER}\s*((?:[^\W\d_]|[°%‰/]).*?)?\s*")


class Quantity(NamedTuple):
    """A number with its unit, which is empty for a bare number.

    Examples
    --------
    >>> size = Quantity.parse("5 µm")
    >>> size
    Quantity(value=5.0, unit='µm')
    >>> size.base
    Quantity(value=5e-06, unit='m')
    >>> str(size)
    '5 µm'
    """

    value: float
    unit: str = ""

    @classmethod
    def parse(cls, text: str) -> Quantity:
        """Reads a text such as ``"5 µm"``, ``"-1e-9 m"`` or ``"512"``; raises ``ValueError`` for any other."""
        found = _TEXT.fullmatch(text)
        if not found:
            raise ValueError(f"No number with a unit: {text!r}.")
        return cls(float(found.group(1)), found.group(2) or "")

    @property
    def base(self) -> Quantity:
        """The same in the unit without its SI prefix. Units that take no prefix stay as they are."""
        factor, unit = without_prefix(self.unit)
        # Division by a power of ten is exact where multiplication by its inverse is not.
        return Quantity(self.value * factor if factor >= 1 else self.value / round(1 / factor), unit)

    def to_pint(self, registry: Any = None) -> pint.Quantity[float]:
        """The same as a quantity of ``pint``, which must be installed; of the application's registry by default."""
        import pint

        units = registry or pint.get_application_registry()  # type: ignore[no-untyped-call]
        quantity: pint.Quantity[float] = units.Quantity(self.value, self.unit.replace("Ω", "ohm") or "dimensionless")
        return quantity

    def __str__(self) -> str:
        return f"{self.value:.15g} {self.unit}".rstrip()
