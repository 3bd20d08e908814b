// The contact point: the position at which the tip touches the surface without being bent.
#pragma once

#include "curves/Baseline.h"

#include <cstddef>

namespace veltaris::curves {

// Fewer points behind the contact point tell too little of the law that they follow.
inline constexpr std::size_t leastContactPoints = 4;

// All numbers are NaN, and `points` is 0, unless the reason is None.
struct CContact
{
    Reason reason = Reason::NothingAcquired;
    std::size_t points = 0;    // how many the contact law was fitted to
    double position = noValue; // in the unit of the axis
    double error = noValue;    // its standard error
    double crossing = noValue; // where the signal crosses the threshold, interpolated between two points
    double slope = noValue;    // signal per unit of the axis behind the contact point, along the fitted points, towards
                               // the surface: above 0 for RaisesSignal, below it for LowersSignal
    CLineFit line{};           // of the signal above the baseline, over the index; of no use for other laws than a line
};

// Finds the contact point of an approach, or of a retract, in two steps:
//  1. Seen from the surface, the first acquired point whose signal is not more than `threshold` noise widths on the
//     repulsive side of the baseline: the last crossing of the threshold. A snap-in, which lies on the other side, is
//     passed.
//  2. The contact law is fitted by least squares to the points behind it: to the signal above the baseline as a line
//     over the position, or, for the powers 3/2 and 2, to the deflection raised to 2/3 or 1/2 as a line over position
//     minus deflection. The contact point is where the fitted law reaches the baseline. Only the share `fitShare` of
//     the points behind the crossing takes part, those next to it, so that neither saturation nor what happens under
//     large forces moves the contact point.
//
// The error is that of the zero of a fitted line, from its own error and that of the baseline (Draper and Smith,
// Applied Regression Analysis, chapter 3: inverse regression).
//
// A reason of the baseline is passed on. There is no contact if fewer than leastContactPoints points can be fitted, if
// all points are behind the crossing, if the law does not rise, or if it reaches the baseline beyond the curve. The
// power laws have no value without a sensitivity, and none has a value if a fitted point is saturated.
CContact FindContact(const CCurve& curve, const CBaseline& baseline, const CCurveOptions& options);

} // namespace veltaris::curves
