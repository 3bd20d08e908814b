// Stretches of a curve, by the indices of their points, and the lines that are fitted to them. As all of this folder,
// for any number of threads.
#pragma once

#include "curves/Curve.h"
#include "curves/CurveOptions.h"
#include "curves/LineFit.h"
#include "curves/kernels/CurveKernels.h"

#include <cstddef>

namespace veltaris::curves {

struct CIndexRange
{
    std::size_t first = 0;
    std::size_t count = 0;

    std::size_t Last() const { return first + count - 1; }
};

bool IsAcquired(double signal);

// The share of a number of points, rounded to the nearest number.
std::size_t ShareOf(std::size_t count, double share);

// Whether positions mean something: CAxis says when.
bool HasUsableAxis(const CCurve& curve);

// The points of a curve within a range, of which `count` may be 0. A point that is beyond an end of the range by less
// than a millionth of a step is taken for one at that end. The axis must be usable and the range finite.
CIndexRange PointsWithin(const CCurve& curve, const CPositionRange& range);

// The range from its first to its last acquired point; `count` is 0 if none was.
CIndexRange AcquiredPart(const CCurve& curve, const CIndexRange& range);

// The points of a range for the loops, and a line of the whole curve in their coordinates.
CStretch StretchOf(const CCurve& curve, const CIndexRange& range);
CTrend TrendOf(const CLineFit& line, const CIndexRange& range);

// The distance of the signal above a line, times a gain.
CDerivation AboveLine(const CLineFit& line, const CIndexRange& range, double gain);

// The line through the first and the last point of a range, both of which were acquired.
CTrend ChordOf(const CCurve& curve, const CIndexRange& range);

// The line that fits the points of which the sums about a trend were taken, three or more.
CLineFit LineOf(const CSums& sums, const CTrend& trend, const CIndexRange& range);

// Whether one of the points that were summed is at a limit.
bool IsSaturated(const CSums& sums, const CSignalLimits& limits);

} // namespace veltaris::curves
