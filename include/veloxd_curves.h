/* clang-format off */
/*
 * VELOxdCurves: slope, baseline, contact point, adhesion and indentation of force curves.
 *
 * This header is the whole interface of the library VELOxdCurves, which is C99 and C++ and knows no files: it works on
 * arrays of any origin. docs/processors.md has the definitions of the quantities, with their formulas.
 *
 * CONVENTIONS, which hold for every function below
 *
 *  1. Curves. A block of curves has `curves` rows of `points` points each. Row i begins at signal + i * pitch, where
 *     `pitch`, the number of doubles from one row to the next, is at least `points`. All rows share one position axis:
 *     point j stands at start + j * step. `step` may be negative. The axis counts the extension of the piezo, in metres
 *     where a length is computed. A point that was never acquired holds a NaN (an infinity counts as one).
 *
 *  2. Results. There is one result for each curve, in the order of the rows, in an array of the caller's. It says either
 *     its value or the reason why it has none: then `reason` is not VEL_CURVE_OK and all its numbers are NaN, its counts
 *     0. A number that takes a calibration that is not known is NaN, too. There is never a number where there is none.
 *     The structures of results have no gaps, and as many bytes on every system.
 *
 *  3. Options. VELCurveDefaults fills them in; set what differs. NULL stands for the defaults. `size` must be as
 *     VELCurveDefaults left it: it tells a newer library which members an older program knows.
 *
 *  4. Return values. Every function that computes returns VEL_CURVE_OK once each curve has its result, whatever that is.
 *     It returns VEL_CURVE_BAD_OPTIONS if an option is outside of its bounds and VEL_CURVE_BAD_CALL if an array that is
 *     needed is NULL, a pitch is too small, or a product of the sizes does not fit into the memory of a process; then it
 *     writes nothing. No function raises anything to its caller, prints, takes memory or fails otherwise.
 *
 *  5. Threads. Functions keep no state. Any number of threads may call them at once, with different parts of one block,
 *     for example. Results have the same bytes on every system and every processor, and whether curves come alone or in a
 *     block.
 *
 *  6. Arrays. Input is not changed. An array for output must not overlap the input, unless a comment says that it may be
 *     the input itself.
 */
#ifndef VELOXD_CURVES_H
#define VELOXD_CURVES_H

#include <stddef.h>
#include <stdint.h>

#if defined(_WIN32) && defined(VELOXD_CURVES_BUILDING)
#define VELOXD_CURVES_API __declspec(dllexport)
#elif defined(_WIN32)
#define VELOXD_CURVES_API __declspec(dllimport)
#elif defined(VELOXD_CURVES_BUILDING)
#define VELOXD_CURVES_API __attribute__((visibility("default")))
#else
#define VELOXD_CURVES_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* NOLINTBEGIN(modernize-use-using,readability-identifier-naming): this is C */

/* ---- Options and results ---------------------------------------------------------------------------------- */

/* Why a curve has no value. VELCurveReasonText has a phrase for each. */
enum VELCurveReason {
  VEL_CURVE_OK = 0,               /* there is a value */
  VEL_CURVE_BAD_AXIS = 1,         /* the axis is not finite or does not rise or fall */
  VEL_CURVE_BAD_OPTIONS = 2,      /* an option is outside of its bounds */
  VEL_CURVE_NOTHING_ACQUIRED = 3, /* no point was acquired */
  VEL_CURVE_TOO_FEW_POINTS = 4,   /* fewer points were acquired than the quantity takes */
  VEL_CURVE_RANGE_OUTSIDE = 5,    /* the range holds no point of the curve */
  VEL_CURVE_SATURATED = 6,        /* a point that the value rests on is at a limit of the signal */
  VEL_CURVE_NO_BASELINE = 7,      /* where the baseline is looked for, the signal is no straight line with noise */
  VEL_CURVE_NO_CONTACT = 8,       /* the signal does not leave the baseline, or never returns to it */
  VEL_CURVE_NO_ADHESION = 9,      /* the signal is nowhere below the baseline by more than its noise */
  VEL_CURVE_NOT_CALIBRATED = 10,  /* sensitivity or spring constant is needed and not known */
  VEL_CURVE_UNREADABLE = 11,      /* a file has no such line; no function here gives it */
  VEL_CURVE_BAD_CALL = 100        /* of a call, never of a curve: see convention 4 */
};

/* The end of the axis at which the surface is. From the data it is the end where the signal varies more. */
enum VELCurveSurface { VEL_SURFACE_FROM_DATA = 0, VEL_SURFACE_AT_HIGH_POSITIONS = 1, VEL_SURFACE_AT_LOW_POSITIONS = 2 };

/* What happens to the signal when the surface pushes the tip away. */
enum VELCurveRepulsion { VEL_REPULSION_RAISES_SIGNAL = 0, VEL_REPULSION_LOWERS_SIGNAL = 1 };

/* How the signal grows behind the contact point: signal ~ position, or deflection ~ indentation^(3/2) or indentation^2. */
enum VELCurveLaw { VEL_LAW_LINE = 0, VEL_LAW_SPHERE = 1, VEL_LAW_CONE = 2 };

/* How curves are looked at. VELCurveDefaults fills it in (convention 3). */
typedef struct VELCurveOptions {
  size_t size;              /* of this structure, in bytes */
  int32_t surface;          /* VELCurveSurface; default VEL_SURFACE_FROM_DATA */
  int32_t repulsion;        /* VELCurveRepulsion; default VEL_REPULSION_RAISES_SIGNAL */
  int32_t law;              /* VELCurveLaw; default VEL_LAW_LINE */
  int32_t reserved;         /* 0 */
  double slope_from;        /* range of the slope, in the unit of the axis and in either order; */
  double slope_to;          /* the whole curve if both are 0, which is the default */
  double baseline_from;     /* range in which the baseline is looked for; if both are 0, which is the default: */
  double baseline_to;
  double baseline_share;    /* this share of the acquired stretch, away from the surface; above 0, at most 1; default 0.4 */
  double threshold;         /* how many noise widths off the baseline a signal is none of it; at least 0; default 5 */
  double signal_step;       /* smallest difference of signals: noise is at least that / sqrt(12); at least 0; default 0 */
  double fit_share;         /* the law is fitted to this share of the points behind the contact; above 0, at most 1; default 0.5 */
  double lowest_signal;     /* a signal at or below this is saturated; default -infinity */
  double highest_signal;    /* a signal at or above this is saturated; default infinity */
  double sensitivity;       /* metres of deflection for a unit of the signal, above 0; default NaN: not known. 1 for a
                               signal that is a deflection in metres, 1 / spring constant for a force in newtons */
  double spring_constant;   /* newtons for a metre of deflection, above 0; default NaN: not known */
} VELCurveOptions;

/* A block of curves (convention 1). */
typedef struct VELCurves {
  size_t curves;            /* number of rows */
  size_t points;            /* of each row */
  size_t pitch;             /* doubles from one row to the next */
  double start;             /* position of the first point */
  double step;              /* from one point to the next */
  const double* signal;
} VELCurves;

/* The straight line through the range of the slope. */
typedef struct VELSlope {
  int64_t reason;           /* VELCurveReason */
  uint64_t points;          /* how many were fitted */
  double slope;             /* signal per unit of the axis */
  double error;             /* its standard error */
  double intercept;         /* the signal of the line at position 0 */
  double residual;          /* the standard deviation of the points from the line */
} VELSlope;

/* The straight line that the signal follows away from the surface. */
typedef struct VELBaseline {
  int64_t reason;           /* VELCurveReason */
  uint64_t points;          /* how many were fitted */
  double offset;            /* the signal of the line at position 0 */
  double tilt;              /* signal per unit of the axis */
  double noise;             /* the standard deviation of the signal from the line */
  double from;              /* position of the first point that was looked at */
  double to;                /* position of the last point that was looked at */
} VELBaseline;

/* Where the tip touches the surface. */
typedef struct VELContact {
  int64_t reason;           /* VELCurveReason */
  uint64_t points;          /* how many the law was fitted to */
  double position;          /* of the contact point */
  double error;             /* its standard error */
  double crossing;          /* where the signal crosses the threshold */
  double slope;             /* of the signal behind the contact point, per unit of the axis, towards the surface */
} VELContact;

/* The largest pull of the surface. */
typedef struct VELAdhesion {
  int64_t reason;           /* VELCurveReason */
  uint64_t index;           /* of the minimum */
  double signal;            /* baseline minus minimum, in the unit of the signal */
  double error;             /* its standard error */
  double position;          /* of the minimum */
  double deflection;        /* in metres; NaN without a sensitivity */
  double force;             /* in newtons; NaN without a spring constant, too */
} VELAdhesion;

/* How far the tip was pushed into the surface. */
typedef struct VELIndentation {
  int64_t reason;           /* VELCurveReason */
  uint64_t index;           /* of the largest indentation */
  double largest;           /* in metres */
  double error;             /* its standard error */
  double position;          /* where it is */
  double deflection;        /* there, in metres */
  double force;             /* there, in newtons; NaN without a spring constant */
  double contact;           /* position of the contact point */
} VELIndentation;

/* ---- Library ---------------------------------------------------------------------------------------------- */

/* Result: the version of the library, such as "0.1.0". */
VELOXD_CURVES_API const char* VELCurveVersion(void);

/* Result: a phrase for a reason, such as "no point was acquired"; for a number that is none, "unknown reason". */
VELOXD_CURVES_API const char* VELCurveReasonText(int64_t reason);

/* Fills in `size` and every default. Does nothing for NULL. */
VELOXD_CURVES_API void VELCurveDefaults(VELCurveOptions* options);

/* ---- Quantities ------------------------------------------------------------------------------------------- */

/* Fits a straight line by least squares to the points within the range of the slope, of which it takes 4. */
VELOXD_CURVES_API int32_t VELCurveSlopes(const VELCurves* curves, const VELCurveOptions* options, VELSlope* results);

/* Finds the baseline of each curve, away from the surface. It takes 16 points. */
VELOXD_CURVES_API int32_t VELCurveBaselines(const VELCurves* curves, const VELCurveOptions* options, VELBaseline* results);

/* Finds the contact point of each approach, by its baseline. */
VELOXD_CURVES_API int32_t VELCurveContacts(const VELCurves* curves, const VELCurveOptions* options, VELContact* results);

/* Finds the maximum adhesion of each retract: its baseline minus its minimum. */
VELOXD_CURVES_API int32_t VELCurveAdhesions(const VELCurves* curves, const VELCurveOptions* options, VELAdhesion* results);

/* Finds the largest indentation of each approach. `indentations` takes the indentation of every point, in metres: rows of
 * `pitch` doubles, of which the first `points` are written, with NaN ahead of the contact point, where nothing was
 * acquired, and where a curve has no value. It may be NULL, and it may be the signal itself if the pitches are equal. */
VELOXD_CURVES_API int32_t VELCurveIndentations(const VELCurves* curves, const VELCurveOptions* options, VELIndentation* results, double* indentations, size_t pitch);

/* Writes the force of every point in newtons: signal minus baseline, times sensitivity and spring constant, above 0 where
 * the surface pushes. `forces` is laid out as `indentations` above, but is needed. A curve without a value gives NaN and
 * its reason in `reasons`, which has one element for each curve and may be NULL. */
VELOXD_CURVES_API int32_t VELCurveForces(const VELCurves* curves, const VELCurveOptions* options, int64_t* reasons, double* forces, size_t pitch);

/* NOLINTEND(modernize-use-using,readability-identifier-naming) */

#ifdef __cplusplus
}
#endif

#endif
