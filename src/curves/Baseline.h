// The baseline of a curve: the straight line on which the signal lies while the tip is away from the surface, and the
// noise about it.
#pragma once

#include "curves/Curve.h"
#include "curves/CurveOptions.h"
#include "curves/LineFit.h"

#include <cstddef>

namespace veltaris::curves {

// Of the range that is looked at: two for each of the eight blocks that the baseline is found by.
inline constexpr std::size_t leastBaselinePoints = 16;

// The numbers are NaN, and `points` is 0, unless the reason is None.
struct CBaseline
{
    Reason reason = Reason::NothingAcquired;
    bool surfaceAtEnd = false; // whether the surface is on the side of the last point, else of the first
    std::size_t points = 0;    // how many the line was fitted to
    double offset = noValue;   // the signal of the line at position 0
    double tilt = noValue;     // signal per unit of the axis
    double noise = noValue;    // the standard deviation of the signal from the line
    double from = noValue;     // positions of the first and the last point that was looked at, in this order of indices
    double to = noValue;

    CLineFit line{};  // the same line over the index of a point
    double width = 0; // `noise`, or the noise of rounding where that is larger: the unit of thresholds
};

// The change of position towards the surface from one index to the next: below 0 if the surface is on the side of the
// first point, whichever way the axis runs.
double InwardStep(const CCurve& curve, const CBaseline& baseline);

// Whether the surface is on the side of the last point. From the data it is if the last third of the acquired stretch
// varies more from its lowest to its highest signal than the first, or as much. The curve must have an acquired point
// and a usable axis.
bool FindSurface(const CCurve& curve, Surface surface);

// Finds the line by repeated medians, and fits it to those parts of the range that are on it, so that three eighths of
// the range may be something else, such as a snap-in (Siegel, Robust regression using repeated medians, Biometrika 69,
// 1982; Rousseeuw and Leroy, Robust Regression and Outlier Detection, 1987, on the reweighted step):
//  1. The range is divided into eight blocks of equal length; at most seven points next to the surface are left over. A
//     block is there if two of its points are acquired. It has a mean signal and, about lines of a common tilt, a
//     variance.
//  2. The first line has the repeated median of the slopes between blocks, and the median level. The square root of
//     the median of the variances is the noise of a block.
//  3. Blocks are kept if their mean is off the first line by no more than 3 standard errors or, if that is more, by 3
//     times the shortest range that holds the levels of more than half of the blocks, and if their variance is no more
//     than 6 of its standard deviations above the median.
//  4. The baseline is the least-squares line through all points of these blocks, and its residual is the noise.
//
// There is no value if fewer than leastBaselinePoints points of the range are acquired or fewer than five blocks are
// there, if fewer than four are kept or the noise is more than three times that of a block, which means that the signal
// is not straight, or if a point of the blocks is saturated. Scale and offset of either axis, and its direction, do not
// matter.
CBaseline FindBaseline(const CCurve& curve, const CCurveOptions& options);

} // namespace veltaris::curves
