#include "curves/Stretch.h"

#include <algorithm>
#include <cmath>

namespace veltaris::curves {

bool IsAcquired(double signal)
{
    return std::abs(signal) <= largestSignal;
}

std::size_t ShareOf(std::size_t count, double share)
{
    return static_cast<std::size_t>(std::llround(share * static_cast<double>(count)));
}

bool HasUsableAxis(const CCurve& curve)
{
    const double last = curve.PositionOf(static_cast<double>(curve.signal.size()));
    return std::isfinite(curve.axis.start) && std::isfinite(last) && std::isnormal(curve.axis.step);
}

CIndexRange PointsWithin(const CCurve& curve, const CPositionRange& range)
{
    const auto count = static_cast<double>(curve.signal.size());
    if (range.IsWhole())
        return {0, curve.signal.size()};
    constexpr double tolerance = 1e-6; // of a step
    const double from = (range.from - curve.axis.start) / curve.axis.step;
    const double to = (range.to - curve.axis.start) / curve.axis.step;
    const double first = std::max(std::ceil(std::min(from, to) - tolerance), 0.0);
    const double end = std::min(std::floor(std::max(from, to) + tolerance) + 1, count);
    if (!(first < end))
        return {};
    return {static_cast<std::size_t>(first), static_cast<std::size_t>(end - first)};
}

CIndexRange AcquiredPart(const CCurve& curve, const CIndexRange& range)
{
    std::size_t first = range.first;
    std::size_t end = range.first + range.count;
    while (first < end && !IsAcquired(curve.signal[first]))
        ++first;
    while (end > first && !IsAcquired(curve.signal[end - 1]))
        --end;
    return {first, end - first};
}

CStretch StretchOf(const CCurve& curve, const CIndexRange& range)
{
    return {curve.signal.data() + range.first, range.count};
}

CTrend TrendOf(const CLineFit& line, const CIndexRange& range)
{
    return {line.meanIndex - static_cast<double>(range.first), line.level, line.tilt};
}

CDerivation AboveLine(const CLineFit& line, const CIndexRange& range, double gain)
{
    const CTrend trend = TrendOf(line, range);
    return {trend.origin, gain, -gain * trend.level, -gain * trend.tilt};
}

CTrend ChordOf(const CCurve& curve, const CIndexRange& range)
{
    const double first = curve.signal[range.first];
    const double last = curve.signal[range.Last()];
    const auto steps = static_cast<double>(range.count - 1);
    return {0.5 * steps, first + 0.5 * (last - first), steps > 0 ? (last - first) / steps : 0};
}

CLineFit LineOf(const CSums& sums, const CTrend& trend, const CIndexRange& range)
{
    const double n = sums.points;
    const double u = sums.u / n;
    const double r = sums.r / n;
    const double spread = sums.uu - u * sums.u;
    const double product = sums.ur - u * sums.r;
    const double tilt = product / spread;
    const double squares = std::max(sums.rr - r * sums.r - tilt * product, 0.0);
    return {n,
            static_cast<double>(range.first) + trend.origin + u,
            spread,
            trend.level + trend.tilt * u + r,
            trend.tilt + tilt,
            std::sqrt(squares / (n - 2))};
}

bool IsSaturated(const CSums& sums, const CSignalLimits& limits)
{
    return sums.lowest <= limits.lowest || sums.highest >= limits.highest;
}

} // namespace veltaris::curves
