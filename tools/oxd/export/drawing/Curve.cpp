#include "oxd/export/drawing/Curve.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace oxd {

namespace {

class Cover
{
public:
    explicit Cover(double width)
        : m_columns(static_cast<std::size_t>(width), {std::numeric_limits<double>::quiet_NaN(), 0})
    {
    }

    void Add(const Point& point) { Add(ColumnOf(point.x), point.y); }

    // All that a straight line between two points passes.
    void AddLine(Point from, Point to)
    {
        if (from.x > to.x) {
            std::swap(from, to);
        }
        for (std::size_t column = ColumnOf(from.x); column <= ColumnOf(to.x); ++column) {
            const auto left = static_cast<double>(column);
            Add(column, HeightAt(std::max(left, from.x), from, to));
            Add(column, HeightAt(std::min(left + 1, to.x), from, to));
        }
    }

    std::vector<ColumnCover> Take() { return std::move(m_columns); }

private:
    static double HeightAt(double x, const Point& from, const Point& to)
    {
        return to.x > from.x ? from.y + (to.y - from.y) * (x - from.x) / (to.x - from.x) : to.y;
    }

    std::size_t ColumnOf(double x) const { return std::min(static_cast<std::size_t>(x), m_columns.size() - 1); }

    void Add(std::size_t column, double y)
    {
        ColumnCover& cover = m_columns[column];
        cover =
            std::isnan(cover.top) ? ColumnCover{y, y} : ColumnCover{std::min(cover.top, y), std::max(cover.bottom, y)};
    }

    std::vector<ColumnCover> m_columns;
};

} // namespace

std::vector<Point> PointsOf(const Curve& curve, const Scale& x, const Scale& y, double width, double height)
{
    // A damaged file may have an axis that leads nowhere: its points are as far apart from each other then.
    const auto fractionOf = [&](double share) {
        const double fraction = x.Fraction(curve.span.min + curve.span.range * share);
        return x.IsFinite() && !std::isnan(fraction) ? fraction : share;
    };
    const double last = std::max<double>(static_cast<double>(curve.values.size()), 2) - 1;
    std::vector<Point> points;
    points.reserve(curve.values.size());
    for (const double value : curve.values) {
        const double share = static_cast<double>(points.size()) / last;
        points.push_back({fractionOf(share) * width, (1 - y.Fraction(value)) * height});
    }
    return points;
}

std::vector<ColumnCover> CoverOf(const Curve& curve, const Scale& x, const Scale& y, double width, double height)
{
    Cover cover(width);
    Point before{0, std::numeric_limits<double>::quiet_NaN()};
    for (const Point& point : PointsOf(curve, x, y, width, height)) {
        if (!std::isnan(point.y)) {
            cover.Add(point);
        }
        if (!std::isnan(point.y) && !std::isnan(before.y)) {
            cover.AddLine(before, point);
        }
        before = point;
    }
    return cover.Take();
}

} // namespace oxd
