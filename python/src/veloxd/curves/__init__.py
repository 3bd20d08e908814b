"""Slope, baseline, contact point, adhesion and indentation of force curves, and contact models.

Curves are NumPy arrays, channels, or labelled arrays of xarray. All numbers are in SI units without prefixes. A curve
that has no value has a `Reason`. Importing this module loads another shared library, VELOxdCurves, which is looked for
where the first one is. Functions may be called by any number of threads, which run at the same time, but for fits.

Examples
--------
>>> import veloxd.curves
>>> z = np.linspace(0, 400e-9, 512)
>>> deflection = np.maximum(z - 300e-9, 0)
>>> point = veloxd.curves.contact_point(deflection, x=z)
>>> f"{point.position:.2e} m"
'3.00e-07 m'
"""

from .._native.curves import library
from .fitting import ModulusFit, fit_modulus
from .models import dmt, hertz_cone, hertz_sphere
from .options import Options
from .quantities import adhesion, baseline, contact_point, force, indentation, slope
from .reason import Reason
from .results import Adhesion, Baseline, ContactPoint, Force, Indentation, Result, Slope

__all__ = [
    "Adhesion",
    "Baseline",
    "ContactPoint",
    "Force",
    "Indentation",
    "ModulusFit",
    "Options",
    "Reason",
    "Result",
    "Slope",
    "adhesion",
    "baseline",
    "contact_point",
    "dmt",
    "fit_modulus",
    "force",
    "hertz_cone",
    "hertz_sphere",
    "indentation",
    "slope",
]

library()  # so that a library that is missing is noticed at once
