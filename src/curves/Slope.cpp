#include "curves/Slope.h"

#include "curves/Stretch.h"

#include <cmath>

namespace veltaris::curves {

namespace {

CSlope SlopeOf(const CLineFit& line, const CAxis& axis)
{
    const double origin = -axis.start / axis.step; // the index of position 0
    return {Reason::None,          static_cast<std::size_t>(line.points),
            line.tilt / axis.step, line.residual / std::sqrt(line.spread) / std::abs(axis.step),
            line.ValueAt(origin),  line.residual};
}

} // namespace

CSlope FitSlope(const CCurve& curve, const CPositionRange& range, const CSignalLimits& limits)
{
    if (!HasUsableAxis(curve))
        return {Reason::BadAxis};
    if (Check(range) != Reason::None)
        return {Reason::BadOptions};
    const CIndexRange within = PointsWithin(curve, range);
    if (within.count == 0 && !curve.signal.empty())
        return {Reason::RangeOutside};
    const CIndexRange points = AcquiredPart(curve, within);
    if (points.count == 0)
        return {Reason::NothingAcquired};
    const CTrend chord = ChordOf(curve, points);
    const CSums sums = CurveKernels().sums(StretchOf(curve, points), chord);
    if (sums.points < static_cast<double>(leastSlopePoints))
        return {Reason::TooFewPoints};
    if (IsSaturated(sums, limits))
        return {Reason::Saturated};
    return SlopeOf(LineOf(sums, chord, points), curve.axis);
}

} // namespace veltaris::curves
