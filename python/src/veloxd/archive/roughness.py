"""Height parameters of areal surface texture, as ISO 25178-2 defines them."""

from __future__ import annotations

from typing import NamedTuple

import numpy as np
import numpy.typing as npt

__all__ = ["Heights", "heights"]


class Heights(NamedTuple):
    """Height parameters; all but ``Ssk`` and ``Sku`` have the unit of the heights."""

    Sa: float
    """arithmetical mean height: the mean distance from the mean plane"""
    Sq: float
    """root mean square height"""
    Ssk: float
    """skewness; not a number for a flat surface"""
    Sku: float
    """kurtosis; not a number for a flat surface"""
    Sz: float
    """maximum height: from the deepest pit to the highest peak"""


def heights(values: npt.ArrayLike) -> Heights:
    """The height parameters of a surface, with sums over samples for the integrals of the definitions.

    Heights count from their mean, and samples that are not finite do not count. No filter is applied: form and waviness
    are to be taken away before.

    Examples
    --------
    >>> heights([[0.0, 2.0], [2.0, 0.0]])
    Heights(Sa=1.0, Sq=1.0, Ssk=0.0, Sku=1.0, Sz=2.0)
    """
    samples = np.asarray(values, np.float64)
    samples = samples[np.isfinite(samples)]
    if not samples.size:
        return Heights(*5 * [float("nan")])
    # In multiples of the largest deviation, so that no power of small heights becomes 0.
    deviations = samples - samples.mean()
    scale = float(np.abs(deviations).max())
    if scale == 0:
        return Heights(0.0, 0.0, float("nan"), float("nan"), 0.0)
    parts = deviations / scale
    mean_square = float(np.mean(parts**2))
    root = mean_square**0.5
    return Heights(
        Sa=float(np.mean(np.abs(parts))) * scale,
        Sq=root * scale,
        Ssk=float(np.mean(parts**3)) / root**3,
        Sku=float(np.mean(parts**4)) / mean_square**2,
        Sz=float(samples.max() - samples.min()),
    )
