"""The interface of the library of force curves: its constants, structures and functions, for ctypes.

veloxd_curves.h says what constants and members mean. Arrays and structures are passed as addresses.
"""

from __future__ import annotations

from ctypes import Structure, c_char_p, c_double, c_int32, c_int64, c_size_t, c_uint64, c_void_p
from typing import Any

# The rest is made by scripts/bindings.

VEL_CURVE_OK = 0
VEL_CURVE_BAD_AXIS = 1
VEL_CURVE_BAD_OPTIONS = 2
VEL_CURVE_NOTHING_ACQUIRED = 3
VEL_CURVE_TOO_FEW_POINTS = 4
VEL_CURVE_RANGE_OUTSIDE = 5
VEL_CURVE_SATURATED = 6
VEL_CURVE_NO_BASELINE = 7
VEL_CURVE_NO_CONTACT = 8
VEL_CURVE_NO_ADHESION = 9
VEL_CURVE_NOT_CALIBRATED = 10
VEL_CURVE_UNREADABLE = 11
VEL_CURVE_BAD_CALL = 100
VEL_SURFACE_FROM_DATA = 0
VEL_SURFACE_AT_HIGH_POSITIONS = 1
VEL_SURFACE_AT_LOW_POSITIONS = 2
VEL_REPULSION_RAISES_SIGNAL = 0
VEL_REPULSION_LOWERS_SIGNAL = 1
VEL_LAW_LINE = 0
VEL_LAW_SPHERE = 1
VEL_LAW_CONE = 2


class VELCurveOptions(Structure):
    _fields_ = (
        ("size", c_size_t),
        ("surface", c_int32),
        ("repulsion", c_int32),
        ("law", c_int32),
        ("reserved", c_int32),
        ("slope_from", c_double),
        ("slope_to", c_double),
        ("baseline_from", c_double),
        ("baseline_to", c_double),
        ("baseline_share", c_double),
        ("threshold", c_double),
        ("signal_step", c_double),
        ("fit_share", c_double),
        ("lowest_signal", c_double),
        ("highest_signal", c_double),
        ("sensitivity", c_double),
        ("spring_constant", c_double),
    )


class VELCurves(Structure):
    _fields_ = (
        ("curves", c_size_t),
        ("points", c_size_t),
        ("pitch", c_size_t),
        ("start", c_double),
        ("step", c_double),
        ("signal", c_void_p),
    )


class VELSlope(Structure):
    _fields_ = (
        ("reason", c_int64),
        ("points", c_uint64),
        ("slope", c_double),
        ("error", c_double),
        ("intercept", c_double),
        ("residual", c_double),
    )


class VELBaseline(Structure):
    _fields_ = (
        ("reason", c_int64),
        ("points", c_uint64),
        ("offset", c_double),
        ("tilt", c_double),
        ("noise", c_double),
        ("from", c_double),
        ("to", c_double),
    )


class VELContact(Structure):
    _fields_ = (
        ("reason", c_int64),
        ("points", c_uint64),
        ("position", c_double),
        ("error", c_double),
        ("crossing", c_double),
        ("slope", c_double),
    )


class VELAdhesion(Structure):
    _fields_ = (
        ("reason", c_int64),
        ("index", c_uint64),
        ("signal", c_double),
        ("error", c_double),
        ("position", c_double),
        ("deflection", c_double),
        ("force", c_double),
    )


class VELIndentation(Structure):
    _fields_ = (
        ("reason", c_int64),
        ("index", c_uint64),
        ("largest", c_double),
        ("error", c_double),
        ("position", c_double),
        ("deflection", c_double),
        ("force", c_double),
        ("contact", c_double),
    )


FUNCTIONS: dict[str, tuple[Any, tuple[Any, ...]]] = {
    # Library
    "VELCurveVersion": (c_char_p, ()),
    "VELCurveReasonText": (c_char_p, (c_int64,)),
    "VELCurveDefaults": (None, (c_void_p,)),
    # Quantities
    "VELCurveSlopes": (c_int32, (c_void_p, c_void_p, c_void_p)),
    "VELCurveBaselines": (c_int32, (c_void_p, c_void_p, c_void_p)),
    "VELCurveContacts": (c_int32, (c_void_p, c_void_p, c_void_p)),
    "VELCurveAdhesions": (c_int32, (c_void_p, c_void_p, c_void_p)),
    "VELCurveIndentations": (c_int32, (c_void_p, c_void_p, c_void_p, c_void_p, c_size_t)),
    "VELCurveForces": (c_int32, (c_void_p, c_void_p, c_void_p, c_void_p, c_size_t)),
}

DESCRIPTIONS: dict[str, str] = {
    "VELCurveVersion": """const char* VELCurveVersion(void);

Result: the version of the library, such as "0.1.0".
""",
    "VELCurveReasonText": """const char* VELCurveReasonText(int64_t reason);

Result: a phrase for a reason, such as "no point was acquired"; for a number that is none, "unknown reason".
""",
    "VELCurveDefaults": """void VELCurveDefaults(VELCurveOptions* options);

Fills in `size` and every default. Does nothing for NULL.
""",
    "VELCurveSlopes": """int32_t VELCurveSlopes(const VELCurves* curves, const VELCurveOptions* options, VELSlope* results);

Fits a straight line by least squares to the points within the range of the slope, of which it takes 4.
""",
    "VELCurveBaselines": """int32_t VELCurveBaselines(const VELCurves* curves, const VELCurveOptions* options, VELBaseline* results);

Finds the baseline of each curve, away from the surface. It takes 16 points.
""",
    "VELCurveContacts": """int32_t VELCurveContacts(const VELCurves* curves, const VELCurveOptions* options, VELContact* results);

Finds the contact point of each approach, by its baseline.
""",
    "VELCurveAdhesions": """int32_t VELCurveAdhesions(const VELCurves* curves, const VELCurveOptions* options, VELAdhesion* results);

Finds the maximum adhesion of each retract: its baseline minus its minimum.
""",
    "VELCurveIndentations": """int32_t VELCurveIndentations(const VELCurves* curves, const VELCurveOptions* options, VELIndentation* results, double* indentations, size_t pitch);

Finds the largest indentation of each approach. `indentations` takes the indentation of every point, in metres: rows of
`pitch` doubles, of which the first `points` are written, with NaN ahead of the contact point, where nothing was
acquired, and where a curve has no value. It may be NULL, and it may be the signal itself if the pitches are equal.
""",
    "VELCurveForces": """int32_t VELCurveForces(const VELCurves* curves, const VELCurveOptions* options, int64_t* reasons, double* forces, size_t pitch);

Writes the force of every point in newtons: signal minus baseline, times sensitivity and spring constant, above 0 where
the surface pushes. `forces` is laid out as `indentations` above, but is needed. A curve without a value gives NaN and
its reason in `reasons`, which has one element for each curve and may be NULL.
""",
}
