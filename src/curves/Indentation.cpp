#include "curves/Indentation.h"

#include "curves/Stretch.h"

#include <algorithm>
#include <cmath>

namespace veltaris::curves {

namespace {

// The points from that of contact, which has an index between those of points, to the surface.
CIndexRange PointsBehind(double contact, const CCurve& curve, bool surfaceAtEnd)
{
    const std::size_t count = curve.signal.size();
    if (!surfaceAtEnd)
        return {0, std::min(static_cast<std::size_t>(std::floor(contact)) + 1, count)};
    const std::size_t first = std::min(static_cast<std::size_t>(std::ceil(contact)), count);
    return {first, count - first};
}

// The standard deviation of a sum of two that do not depend on each other.
double Together(double a, double b)
{
    return std::sqrt(a * a + b * b);
}

bool HasLimits(const CSignalLimits& limits)
{
    return std::isfinite(limits.lowest) || std::isfinite(limits.highest);
}

bool IsSaturatedWithin(const CIndexRange& range, const CCurve& curve, const CSignalLimits& limits)
{
    if (!HasLimits(limits))
        return false;
    const CRange signal = CurveKernels().range(StretchOf(curve, range));
    return signal.lowest <= limits.lowest || signal.highest >= limits.highest;
}

// Why there is no indentation, whatever the curve looks like behind the contact point.
Reason Obstacle(const CBaseline& baseline, const CContact& contact, const CCurveOptions& options)
{
    if (baseline.reason != Reason::None)
        return baseline.reason;
    if (contact.reason != Reason::None)
        return contact.reason;
    if (Check(options) != Reason::None)
        return Reason::BadOptions;
    return std::isnan(options.calibration.sensitivity) ? Reason::NotCalibrated : Reason::None;
}

// Nothing may be read from the approach once its indentation is written: the two may share their memory.
CIndentation IndentBehind(const CIndexRange& behind, double contactIndex, const CCurve& approach,
                          const CBaseline& baseline, const CCurveOptions& options, std::span<double> curve)
{
    const CCalibration& calibration = options.calibration;
    const double inward = InwardStep(approach, baseline);
    CDerivation depth = AboveLine(baseline.line, behind, -calibration.sensitivity * SignOf(options.repulsion));
    depth.offset += inward * (baseline.line.meanIndex - contactIndex);
    depth.rise += inward;
    const CStretch stretch = StretchOf(approach, behind);
    const CHighest largest = curve.empty() ? CurveKernels().highest(stretch, depth)
                                           : CurveKernels().derive(stretch, depth, curve.data() + behind.first);
    if (largest.index == behind.count)
        return {Reason::NoContact};
    const std::size_t index = behind.first + largest.index;
    const double deflection = inward * (static_cast<double>(index) - contactIndex) - largest.value;
    CIndentation indentation{Reason::None, index, largest.value};
    indentation.position = approach.PositionOf(static_cast<double>(index));
    indentation.deflection = deflection;
    indentation.force = deflection * calibration.springConstant;
    return indentation;
}

} // namespace

CIndentation Indent(const CCurve& approach, const CBaseline& baseline, const CContact& contact,
                    const CCurveOptions& options, std::span<double> curve)
{
    CIndentation indentation{Obstacle(baseline, contact, options)};
    CIndexRange behind;
    if (indentation.reason == Reason::None) {
        const double contactIndex = (contact.position - approach.axis.start) / approach.axis.step;
        behind = PointsBehind(contactIndex, approach, baseline.surfaceAtEnd);
        indentation = IsSaturatedWithin(behind, approach, options.limits)
                          ? CIndentation{Reason::Saturated}
                          : IndentBehind(behind, contactIndex, approach, baseline, options, curve);
    }
    if (indentation.reason != Reason::None)
        behind = {};
    else
        indentation.error = Together(contact.error, options.calibration.sensitivity * baseline.noise);
    if (!curve.empty()) {
        const std::size_t end = behind.first + behind.count;
        CurveKernels().erase(curve.data(), behind.first);
        CurveKernels().erase(curve.data() + end, curve.size() - end);
    }
    return indentation;
}

Reason ForceCurve(const CCurve& curve, const CBaseline& baseline, const CCurveOptions& options, std::span<double> force)
{
    const double factor = options.calibration.sensitivity * options.calibration.springConstant;
    Reason reason = baseline.reason != Reason::None ? baseline.reason : Check(options);
    if (reason == Reason::None && std::isnan(factor))
        reason = Reason::NotCalibrated;
    const CIndexRange whole{0, curve.signal.size()};
    if (reason == Reason::None)
        CurveKernels().derive(StretchOf(curve, whole),
                              AboveLine(baseline.line, whole, factor * SignOf(options.repulsion)), force.data());
    else
        CurveKernels().erase(force.data(), force.size());
    return reason;
}

} // namespace veltaris::curves
