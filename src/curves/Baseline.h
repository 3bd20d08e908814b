// The baseline of a curve: the straight line on which the signal lies while the tip is away from the surface, and the
// noise about it.
#pragma once

#include "curves/Curve.h"
#include "curves/CurveOptions.h"
#include "curves/LineFit.h"

#include <cstddef>

namespace veltaris::curves {

// Of what is looked at; and the baseline takes two points in most of the eight blocks that it is found by.
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

    CLineFit line;    // the same line over the index of a point
    double width = 0; // `noise`, or the noise of rounding where that is larger: the unit of thresholds
};

// Whether the surface is on the side of the last point. From the data it is if the last third of the acquired stretch
// varies more from its lowest to its highest signal than the first, or as much. The curve must have an acquired point
// and a usable axis.
bool FindSurface(const CCurve& curve, Surface surface);

// Finds the line by repeated medians and one reweighted least-squares step (Siegel 1982; Rousseeuw and Leroy, Robust
// Regression and Outlier Detection, 1987), so that up to three of eight parts of the range may be off the line:
//  1. The range is divided into eight blocks of equal length. Each has a mean position and a mean signal.
//  2. The first line has the repeated median of the slopes between blocks, and the median offset. The first noise width
//  is
//     the median of the blocks' standard deviations.
//  3. Points within three such widths of the first line are fitted by least squares. The standard deviation of these
//     points from that line, corrected for what three widths cut off a normal distribution, is the noise.
//
// There is no value if fewer than leastBaselinePoints points of the range are acquired or fewer than five blocks hold
// two of them, if a point that the line was fitted to is saturated, or if what is found is no straight line with noise:
// fewer than half of the acquired points are fitted, or the noise changes by less than a tenth of its width from point
// to point, so that it is a curve. Scale and offset of either axis, and its direction, do not matter.
CBaseline FindBaseline(const CCurve& curve, const CCurveOptions& options);

} // namespace veltaris::curves
