// One line of a channel as a curve over its points, ready to be drawn.
#pragma once

#include "oxd/library/Channel.h"
#include "oxd/picture/Canvas.h"
#include "oxd/picture/Scale.h"

#include <cstdint>
#include <vector>

namespace oxd {

struct Curve
{
    AxisSpan span;              // of the positions of its points
    std::vector<double> values; // NaN where there is none
    std::uint32_t colour;       // 0xAARRGGBB
};

// Where the points of a curve are in a plot of so many pixels, from its top left corner; y is a NaN for a point without
// a value. Points beyond the scales are at their ends.
std::vector<Point> PointsOf(const Curve& curve, const Scale& x, const Scale& y, double width, double height);

// The rows of pixels that a curve covers in one column, counted from the top; none if `top` is a NaN.
struct ColumnCover
{
    double top, bottom;
};

// What a curve covers of a plot of so many pixels. Where it is steep it covers all rows that it passes within a column,
// and where it leaves the scales it is at their ends.
std::vector<ColumnCover> CoverOf(const Curve& curve, const Scale& x, const Scale& y, double width, double height);

} // namespace oxd
