#include "curves/Adhesion.h"

#include "curves/Stretch.h"

#include <cmath>

namespace veltaris::curves {

namespace {

// There is a value if the depth of the minimum, above 0, and the height of the rest are such.
Reason Judge(double depth, double height, double threshold)
{
    if (depth > threshold && depth > 0)
        return Reason::None;
    return height > threshold ? Reason::NoAdhesion : Reason::NoContact;
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
    const double down = -SignOf(options.repulsion);
    const CExtremes extremes =
        CurveKernels().derive(StretchOf(retract, whole), AboveLine(baseline.line, whole, down), nullptr);
    const double depth = extremes.highest;
    const Reason reason = Judge(depth, -extremes.lowest, options.threshold * baseline.width);
    if (reason != Reason::None)
        return {reason};
    if (IsAtLimit(retract.signal[extremes.indexOfHighest], options.limits))
        return {Reason::Saturated};
    const auto index = static_cast<double>(extremes.indexOfHighest);
    const double variance = baseline.noise * baseline.noise + baseline.line.VarianceAt(index, baseline.noise);
    const double deflection = depth * options.calibration.sensitivity;
    return {Reason::None,
            extremes.indexOfHighest,
            depth,
            std::sqrt(variance),
            retract.PositionOf(index),
            deflection,
            deflection * options.calibration.springConstant};
}

} // namespace veltaris::curves
