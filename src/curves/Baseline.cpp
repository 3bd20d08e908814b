#include "curves/Baseline.h"

#include "curves/Stretch.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace veltaris::curves {

namespace {

constexpr std::size_t blockCount = 8;
constexpr double leastBlocks = 5;
constexpr double leastKeptBlocks = 4;

// A larger noise, as a multiple of that of a block, is not that of a straight line.
constexpr double mostNoise = 3;

// Of rounding to steps of 1: the standard deviation of a uniform distribution.
constexpr double roundingNoise = 0.28867513459481287;

// The points of a range that are farthest from the surface.
CIndexRange Far(const CIndexRange& range, std::size_t count, bool surfaceAtEnd)
{
    return {surfaceAtEnd ? range.first : range.first + range.count - count, count};
}

// The part of a curve in which the baseline is looked for, without what is left over behind its blocks. It begins or
// ends with an acquired point at the side away from the surface.
CIndexRange Window(const CCurve& curve, const CIndexRange& acquired, bool surfaceAtEnd, const CCurveOptions& options)
{
    CIndexRange range = acquired;
    if (options.baselineRange.IsWhole()) {
        const std::size_t count = std::max<std::size_t>(ShareOf(acquired.count, options.baselineShare), 1);
        range = Far(acquired, count, surfaceAtEnd);
    } else {
        range = PointsWithin(curve, options.baselineRange);
    }
    range = AcquiredPart(curve, range);
    return Far(range, range.count - range.count % blockCount, surfaceAtEnd);
}

// A line that distances are measured from: the chord of the half that is far from the surface, in the coordinates of
// the window.
CTrend RoughLine(const CCurve& curve, const CIndexRange& window, bool surfaceAtEnd)
{
    const CIndexRange half = AcquiredPart(curve, Far(window, window.count / 2, surfaceAtEnd));
    CTrend chord = ChordOf(curve, half);
    chord.origin += static_cast<double>(half.first - window.first);
    return chord;
}

// What noise cannot be less than: that of rounding to steps, and that of computing with numbers of this size.
double LeastWidth(const CTrend& rough, const CCurveOptions& options)
{
    const double size = std::abs(rough.level) + std::abs(rough.tilt * rough.origin);
    return std::max(roundingNoise * options.signalStep, 16 * std::numeric_limits<double>::epsilon() * size);
}

void Describe(CBaseline& baseline, const CCurve& curve, const CIndexRange& window)
{
    baseline.points = static_cast<std::size_t>(baseline.line.points);
    baseline.offset = baseline.line.ValueAt(-curve.axis.start / curve.axis.step);
    baseline.tilt = baseline.line.tilt / curve.axis.step;
    baseline.noise = baseline.line.residual;
    baseline.from = curve.PositionOf(static_cast<double>(window.first));
    baseline.to = curve.PositionOf(static_cast<double>(window.Last()));
}

// Fits the line of `baseline` to a part of the curve, or says why that cannot be done.
Reason Fit(CBaseline& baseline, const CCurve& curve, const CIndexRange& window, const CCurveOptions& options)
{
    const CTrend rough = RoughLine(curve, window, baseline.surfaceAtEnd);
    const double leastWidth = LeastWidth(rough, options);
    const CBlocks blocks = CurveKernels().blocks(StretchOf(curve, window), rough, leastWidth);
    if (blocks.points < static_cast<double>(leastBaselinePoints) || blocks.blocks < leastBlocks)
        return Reason::TooFewPoints;
    if (blocks.kept < leastKeptBlocks)
        return Reason::NoBaseline;
    if (IsSaturated(blocks.sums, options.limits))
        return Reason::Saturated;
    const CLineFit line = LineOf(blocks.sums, rough, window);
    if (!(line.residual <= mostNoise * std::sqrt(blocks.variance)))
        return Reason::NoBaseline;
    baseline.line = line;
    baseline.width = std::max(line.residual, leastWidth);
    Describe(baseline, curve, window);
    return Reason::None;
}

double VariationOf(const CCurve& curve, const CIndexRange& range)
{
    const CRange signal = CurveKernels().range(StretchOf(curve, range));
    return signal.highest - signal.lowest;
}

bool VariesMoreAtEnd(const CCurve& curve, const CIndexRange& acquired)
{
    const std::size_t third = std::max<std::size_t>(acquired.count / 3, 1);
    return VariationOf(curve, {acquired.first + acquired.count - third, third}) >=
           VariationOf(curve, {acquired.first, third});
}

bool IsSurfaceAtEnd(const CCurve& curve, const CIndexRange& acquired, Surface surface)
{
    if (surface == Surface::FromData)
        return VariesMoreAtEnd(curve, acquired);
    return (surface == Surface::AtHighPositions) == (curve.axis.step > 0);
}

} // namespace

double InwardStep(const CCurve& curve, const CBaseline& baseline)
{
    const double step = std::abs(curve.axis.step);
    return baseline.surfaceAtEnd ? step : -step;
}

bool FindSurface(const CCurve& curve, Surface surface)
{
    return IsSurfaceAtEnd(curve, AcquiredPart(curve, {0, curve.signal.size()}), surface);
}

CBaseline FindBaseline(const CCurve& curve, const CCurveOptions& options)
{
    if (!HasUsableAxis(curve))
        return {Reason::BadAxis};
    if (Check(options) != Reason::None)
        return {Reason::BadOptions};
    const CIndexRange acquired = AcquiredPart(curve, {0, curve.signal.size()});
    if (acquired.count == 0)
        return {Reason::NothingAcquired};
    if (PointsWithin(curve, options.baselineRange).count == 0)
        return {Reason::RangeOutside};
    CBaseline baseline;
    baseline.surfaceAtEnd = IsSurfaceAtEnd(curve, acquired, options.surface);
    const CIndexRange window = Window(curve, acquired, baseline.surfaceAtEnd, options);
    baseline.reason = window.count < leastBaselinePoints ? Reason::TooFewPoints : Fit(baseline, curve, window, options);
    return baseline;
}

} // namespace veltaris::curves
