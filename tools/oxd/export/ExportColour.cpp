#include "oxd/export/ExportKinds.h"

#include "oxd/export/Field.h"
#include "oxd/export/Labels.h"
#include "oxd/picture/Canvas.h"
#include "oxd/picture/ColourMap.h"
#include "oxd/picture/Ruler.h"
#include "oxd/system/Failure.h"
#include "velstdlib/math/Round.h"

#include <algorithm>
#include <cmath>

namespace oxd {

namespace {

using veltaris::velstdlib::math::vel_round;

// The margins around the samples, in pixels. They do not depend on the texts, so that the samples of pictures of one
// size are in the same place.
constexpr int leftMargin = 76;
constexpr int topMargin = 42;
constexpr int rightMargin = 136;
constexpr int bottomMargin = 62;

constexpr double halfPixel = 0.5;

// The height of the samples over their width: true to scale, within reason, where both axes have the same unit.
double AspectRatio(const Axis& x, const Axis& y)
{
    constexpr double other = 0.75;
    constexpr double flattest = 0.125;
    const double ratio = std::fabs(y.range / x.range);
    const bool sameKind = x.unit == y.unit && !x.unit.empty();
    return sameKind && std::isfinite(ratio) && ratio > 0 ? std::clamp(ratio, flattest, 1 / flattest) : other;
}

// Samples of small channels become squares of several pixels.
Extent PlotSize(const LineSource& source, double aspectRatio)
{
    constexpr std::uint64_t comfortable = 640;
    constexpr std::uint64_t most = 1024;
    const std::uint64_t cells = std::clamp<std::uint64_t>(std::max(source.Points(), source.Lines()), 1, most);
    const std::uint64_t longSide = cells * std::max<std::uint64_t>(1, comfortable / cells);
    const auto shorter = [&](double factor) {
        return static_cast<std::size_t>(vel_round(static_cast<double>(longSide) * factor));
    };
    return aspectRatio <= 1 ? Extent{longSide, shorter(aspectRatio)} : Extent{shorter(1 / aspectRatio), longSide};
}

// The first and the last sample are at the ends of the axis, so their cells reach beyond it by half of their size.
Scale ScaleOf(const Axis& axis, std::uint64_t count)
{
    const double halfCell = count > 1 ? axis.range / static_cast<double>(count - 1) / 2 : 0;
    return {axis.min - halfCell, axis.min + axis.range + halfCell};
}

void DrawSamples(Canvas& canvas, const Rectangle& place, const Field& field, const Scale& contrast)
{
    const Extent size = field.Size();
    canvas.DrawCells(place, static_cast<int>(size.columns), static_cast<int>(size.rows), [&](int column, int row) {
        const double value = field.At(static_cast<std::size_t>(column), size.rows - 1 - static_cast<std::size_t>(row));
        const double fraction = contrast.Fraction(value);
        return std::isnan(fraction) ? 0 : ColourOf(fraction);
    });
    canvas.DrawFrame(place);
}

void DrawColourBar(Canvas& canvas, const Rectangle& place)
{
    const int steps = static_cast<int>(place.height);
    canvas.DrawCells(place, 1, steps, [&](int, int row) { return ColourOf(1 - (row + halfPixel) / steps); });
    canvas.DrawFrame(place);
}

} // namespace

void WriteColourPicture(ExportJob& job)
{
    const Channel& channel = job.source.GetChannel();
    const Axis x = channel.ReadAxis(pointAxis);
    const Axis y = channel.ReadAxis(lineAxis);
    const Axis signal = channel.ReadAxis(signalAxis);
    const Extent size = PlotSize(job.source, AspectRatio(x, y));
    const Field field(job.source, size);
    const Scale contrast = field.Contrast();
    if (!contrast.IsFinite()) {
        throw Failure(ExitCode::No, job.file, job.source.NothingToShow());
    }

    const auto width = static_cast<double>(size.columns);
    const auto height = static_cast<double>(size.rows);
    constexpr double barDistance = 22;
    constexpr double barWidth = 20;
    const Rectangle plot{leftMargin, topMargin, width, height};
    const Rectangle bar{leftMargin + width + barDistance, topMargin, barWidth, height};
    Canvas canvas(leftMargin + static_cast<int>(size.columns) + rightMargin,
                  topMargin + static_cast<int>(size.rows) + bottomMargin);
    canvas.DrawText(job.title, plot.x, topMargin / 2.0, Anchor::Begin, width + barDistance + barWidth);
    DrawSamples(canvas, plot, field, contrast);
    Ruler(ScaleOf(x, job.source.Points()), x.name, x.unit, width).DrawBelow(canvas, plot.x, plot.y + height);
    Ruler(ScaleOf(y, job.source.Lines()), y.name, y.unit, height).DrawLeft(canvas, plot.x, plot.y);
    DrawColourBar(canvas, bar);
    Ruler(contrast, signal.name, signal.unit, height).DrawRight(canvas, bar.x + barWidth, plot.y);
    job.output.Write(WithTexts(canvas.ToPng(), LabelsWithRange(job, contrast)));
}

} // namespace oxd
