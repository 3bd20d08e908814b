// The slope of a curve: its least-squares straight line.
#pragma once

#include "curves/Curve.h"
#include "curves/CurveOptions.h"
#include "curves/LineFit.h"

#include <cstddef>

namespace veltaris::curves {

// Fewer points tell too little of their noise. Line operators ask for as many.
inline constexpr std::size_t leastSlopePoints = 4;

// All numbers are NaN, and `points` is 0, unless the reason is None.
struct CSlope
{
    Reason reason = Reason::NothingAcquired;
    std::size_t points = 0;     // how many were fitted
    double slope = noValue;     // signal per unit of the axis
    double error = noValue;     // its standard error
    double intercept = noValue; // the signal of the line at position 0
    double residual = noValue; // the standard deviation of the points from the line, with points - 2 in the denominator
};

// Fits y = intercept + slope x by least squares to all acquired points within the range; the standard error is
// residual / sqrt(sum of (x - mean x)^2).
//
// There is no value for an axis that is not usable, a range without a point of the curve, fewer than leastSlopePoints
// acquired points, or a saturated point among them.
CSlope FitSlope(const CCurve& curve, const CPositionRange& range = {}, const CSignalLimits& limits = {});

} // namespace veltaris::curves
