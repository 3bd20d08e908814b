"""Takes arrays of any kind as numbers, with what their masks hide as missing."""

from __future__ import annotations

from typing import Any

import numpy as np
import numpy.typing as npt

from ._reading import Form


def as_numbers(values: npt.ArrayLike, form: Form) -> npt.NDArray[Any] | np.generic:
    """The values as an array, in which masked ones are NaN, or `RAW_MISSING` among raw samples.

    Raises ``TypeError`` if they are no real numbers, or raw samples no integers.
    """
    numbers: Any = np.ma.asarray(values) if _is_masked(values) else np.asarray(values)
    is_raw = form.dtype.kind == "i"
    if numbers.dtype.kind not in ("iu" if is_raw else "iuf"):
        wanted = "integers" if is_raw else "real numbers"
        raise TypeError(f"A channel takes {wanted}, not values of type {numbers.dtype}.")
    if not isinstance(numbers, np.ma.MaskedArray):
        array: npt.NDArray[Any] | np.generic = numbers
        return array
    wide = np.promote_types(numbers.dtype, form.dtype)
    filled: npt.NDArray[Any] = np.ma.filled(numbers.astype(wide), form.missing)
    return filled


def _is_masked(values: Any) -> bool:
    parts = values if isinstance(values, (list, tuple)) else (values,)
    return any(isinstance(part, np.ma.MaskedArray) for part in parts)
