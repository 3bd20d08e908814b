// The maximum adhesion: how far the tip is pulled below the baseline before it comes off.
#pragma once

#include "curves/Baseline.h"

#include <cstddef>

namespace veltaris::curves {

// All numbers are NaN unless the reason is None; so is what takes a calibration that is not known.
struct CAdhesion
{
    Reason reason = Reason::NothingAcquired;
    std::size_t index = 0;       // of the minimum
    double signal = noValue;     // baseline minus minimum, in the unit of the signal; above 0
    double error = noValue;      // its standard error: the noise, the error of the baseline at that position, and what
                                 // the samples may have missed
    double position = noValue;   // of the minimum
    double deflection = noValue; // in metres: signal times sensitivity
    double force = noValue;      // in newtons: deflection times spring constant
};

// The largest distance of an acquired point of a retract from the baseline, on the attractive side; the first of equals
// in order of index. The minimum is that of the samples: nothing is fitted to it, so that noise makes it a little
// larger on average.
// The tip may come off up to one step farther out, when it is pulled by as much more as the signal falls in a step.
//
// A reason of the baseline is passed on. There is no adhesion if the distance is not more than `threshold` noise
// widths, and no contact if no point is farther than that from the baseline on the other side either. A minimum that is
// saturated has no value.
CAdhesion MaximumAdhesion(const CCurve& retract, const CBaseline& baseline, const CCurveOptions& options);

} // namespace veltaris::curves
