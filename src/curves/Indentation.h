// The indentation: how far the tip has gone into the surface. The piezo has moved by so much behind the contact point,
// and the cantilever has bent by part of that; the rest is the indentation.
#pragma once

#include "curves/Contact.h"

#include <cstddef>
#include <span>

namespace veltaris::curves {

// All numbers are NaN unless the reason is None; so is the force without a spring constant.
struct CIndentation
{
    Reason reason = Reason::NothingAcquired;
    std::size_t index = 0;       // of the largest indentation
    double largest = noValue;    // in metres
    double error = noValue;      // its standard error: that of the contact point, and the noise as a deflection
    double position = noValue;   // of the largest indentation
    double deflection = noValue; // in metres, there
    double force = noValue;      // in newtons, there
};

// The indentation at a point is |position - contact point| minus the deflection, which is the distance of the signal
// from the baseline, on the repulsive side, times the sensitivity. The axis must be in metres.
//
// `curve` takes the indentation of each point, and a NaN for points ahead of the contact point and those that were not
// acquired; all of it is NaN if there is no value. It has as many elements as the approach, or none if it is not
// wanted. It may be the memory of the signal itself. `largest` is the first of equals in order of index.
//
// A reason of the baseline and of the contact point is passed on. There is no value without a sensitivity, or if a
// point behind the contact point is saturated.
CIndentation Indent(const CCurve& approach, const CBaseline& baseline, const CContact& contact,
                    const CCurveOptions& options, std::span<double> curve = {});

// Writes the signal above the baseline, on the repulsive side: as a force in newtons if both calibrations are known.
// Gives Reason::NotCalibrated, and NaN everywhere, if one is not; a reason of the baseline is passed on in the same
// way. Points that were not acquired give NaN. `force` has as many elements as the curve and may be the signal itself.
Reason ForceCurve(const CCurve& curve, const CBaseline& baseline, const CCurveOptions& options,
                  std::span<double> force);

} // namespace veltaris::curves
