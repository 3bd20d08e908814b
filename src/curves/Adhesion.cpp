#include "curves/Adhesion.h"

#include "curves/Stretch.h"

#include <algorithm>
#include <cmath>

namespace veltaris::curves {

namespace {

// Why a retract whose minimum is not deep enough has no adhesion: no point leaves the baseline the other way either.
Reason WhyNone(const CStretch& whole, const CDerivation& height, double threshold)
{
    return CurveKernels().highest(whole, height).value > threshold ? Reason::NoAdhesion : Reason::NoContact;
}

// How far the signal rises from the minimum towards the surface in one step: the mean of up to four steps, as noise
// would make much of one. 0 if no point follows.
double RiseBehind(const CCurve& retract, const CBaseline& baseline, std::size_t minimum, double up)
{
    constexpr std::size_t mostSteps = 4;
    const std::size_t there = baseline.surfaceAtEnd ? retract.signal.size() - 1 - minimum : minimum;
    for (std::size_t steps = std::min(mostSteps, there); steps > 0; --steps) {
        const double next = retract.signal[baseline.surfaceAtEnd ? minimum + steps : minimum - steps];
        if (IsAcquired(next))
            return std::max(up * (next - retract.signal[minimum]) / static_cast<double>(steps), 0.0);
    }
    return 0;
}

bool IsAtLimit(double signal, const CSignalLimits& limits)
{
    return signal <= limits.lowest || signal >= limits.highest;
}

} // namespace

CAdhesion MaximumAdhesion(const CCurve& retract, const CBaseline& baseline, const CCurveOptions& options)
{
    if (baseline.reason != Reason::None)
        return {baseline.reason};
    if (Check(options) != Reason::None)
        return {Reason::BadOptions};
    const CIndexRange whole{0, retract.signal.size()};
    const double up = SignOf(options.repulsion);
    const double threshold = options.threshold * baseline.width;
    const auto [depth, index] = CurveKernels().highest(StretchOf(retract, whole), AboveLine(baseline.line, whole, -up));
    if (!(depth > threshold && depth > 0))
        return {WhyNone(StretchOf(retract, whole), AboveLine(baseline.line, whole, up), threshold)};
    if (IsAtLimit(retract.signal[index], options.limits))
        return {Reason::Saturated};
    const auto place = static_cast<double>(index);
    const double missed = RiseBehind(retract, baseline, index, up);
    const double variance = baseline.noise * baseline.noise + baseline.line.VarianceAt(place, baseline.noise) +
                            missed * missed / 3; // which is evenly distributed up to that
    const double deflection = depth * options.calibration.sensitivity;
    return {Reason::None,
            index,
            depth,
            std::sqrt(variance),
            retract.PositionOf(place),
            deflection,
            deflection * options.calibration.springConstant};
}

} // namespace veltaris::curves
