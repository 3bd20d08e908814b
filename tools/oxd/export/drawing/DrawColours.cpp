#include "oxd/export/drawing/Drawing.h"
#include "oxd/export/drawing/Field.h"
#include "oxd/export/drawing/Margins.h"
#include "oxd/export/drawing/ScaleBar.h"
#include "oxd/picture/Canvas.h"
#include "oxd/picture/Ruler.h"
#include "oxd/system/Failure.h"
#include "oxd/system/Text.h"
#include "velstdlib/math/Round.h"

#include <algorithm>
#include <cmath>
#include <memory>

namespace oxd {

namespace {

using veltaris::velstdlib::math::vel_round;

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
Extent UsualPlotSize(const LineSource& source, double aspectRatio)
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

Extent PlotSize(const ExportJob& job, double aspectRatio)
{
    const PictureOptions& options = job.picture;
    if (!options.size) {
        return UsualPlotSize(job.source, aspectRatio);
    }
    return PlotWithin(*options.size, options.axes ? margins : Extent{}, aspectRatio, options.ShapeOf(1, 1).Fineness());
}

// The cells that pixels of the file can show.
Extent Finest(const Extent& size, const PictureOptions& options)
{
    const double fineness = options.ShapeOf(1, 1).Fineness();
    const auto cells = [fineness](std::size_t pixels) {
        return static_cast<std::size_t>(std::ceil(static_cast<double>(pixels) * fineness));
    };
    return {cells(size.columns), cells(size.rows)};
}

// The first and the last sample are at the ends of the axis, so their cells reach beyond it by half of their size.
Scale ScaleOf(const Axis& axis, std::uint64_t count)
{
    const double halfCell = count > 1 ? axis.range / static_cast<double>(count - 1) / 2 : 0;
    return {axis.min - halfCell, axis.min + axis.range + halfCell};
}

// Where the value of a cell is in a range, NaN for a cell without one.
struct Cells
{
    const Field& field;
    const Scale& range;
    const PictureOptions& options;

    void Draw(Canvas& canvas, const Rectangle& place) const
    {
        const Extent size = field.Size();
        canvas.DrawCells(place, static_cast<int>(size.columns), static_cast<int>(size.rows), [&](int column, int row) {
            const auto fromTop = static_cast<std::size_t>(row);
            const double value =
                field.At(static_cast<std::size_t>(column), options.firstLineOnTop ? fromTop : size.rows - 1 - fromTop);
            const double fraction = range.Fraction(value);
            return std::isnan(fraction) ? 0 : options.colour(fraction);
        });
    }
};

// Ends that stand for values beyond them, too, are pointed.
void DrawColourBar(Canvas& canvas, const Rectangle& place, ColourOf colour, const Clipped& clipped)
{
    constexpr double pointHeight = 10;
    const int steps = static_cast<int>(place.height);
    canvas.DrawCells(place, 1, steps, [&](int, int row) { return colour(1 - (row + halfPixel) / steps); });
    canvas.DrawFrame(place);
    if (clipped.above > 0) {
        canvas.DrawTriangle({place.x, place.y - 1 - pointHeight, place.width, pointHeight}, Canvas::Pointing::Up,
                            colour(1));
    }
    if (clipped.below > 0) {
        canvas.DrawTriangle({place.x, place.y + place.height + 1, place.width, pointHeight}, Canvas::Pointing::Down,
                            colour(0));
    }
}

// Says how much a range that the user chose leaves out. By default that is as documented.
void NoteClipped(ExportJob& job, const Clipped& clipped)
{
    constexpr double percent = 100;
    if (job.picture.contrast && clipped.below + clipped.above > 0) {
        job.notes.push_back(ToText(percent * clipped.below) + " % of the values are below the range of the colours, " +
                            ToText(percent * clipped.above) + " % above it");
    }
}

void DrawSamples(Canvas& canvas, const Rectangle& plot, const ExportJob& job, const Cells& cells)
{
    cells.Draw(canvas, plot);
    if (job.picture.scaleBar) {
        const Axis x = job.source.GetChannel().ReadAxis(pointAxis);
        DrawScaleBar(canvas, plot, ScaleOf(x, job.source.Points()), x.unit);
    }
}

void DrawWithAxes(Canvas& canvas, const ExportJob& job, const Cells& cells, const Extent& size, const Clipped& clipped)
{
    const Channel& channel = job.source.GetChannel();
    const Axis x = channel.ReadAxis(pointAxis);
    const Axis y = channel.ReadAxis(lineAxis);
    const Axis signal = job.source.SignalAxis();
    const auto width = static_cast<double>(size.columns);
    const auto height = static_cast<double>(size.rows);
    constexpr double barDistance = 22;
    constexpr double barWidth = 20;
    const Rectangle plot{leftMargin, topMargin, width, height};
    const Rectangle bar{leftMargin + width + barDistance, topMargin, barWidth, height};
    DrawTitle(canvas, plot, job);
    DrawSamples(canvas, plot, job, cells);
    canvas.DrawFrame(plot);
    const Scale upwards = ScaleOf(y, job.source.Lines());
    const Scale lines = job.picture.firstLineOnTop ? Scale(upwards.To(), upwards.From()) : upwards;
    Ruler(ScaleOf(x, job.source.Points()), x.name, x.unit, width).DrawBelow(canvas, plot.x, plot.y + height);
    Ruler(lines, y.name, y.unit, height).DrawLeft(canvas, plot.x, plot.y);
    DrawColourBar(canvas, bar, job.picture.colour, clipped);
    Ruler(cells.range, signal.name, signal.unit, height).DrawRight(canvas, bar.x + barWidth, plot.y);
}

void DrawAlone(Canvas& canvas, const ExportJob& job, const Cells& cells, const Extent& size)
{
    DrawSamples(canvas, {0, 0, static_cast<double>(size.columns), static_cast<double>(size.rows)}, job, cells);
}

} // namespace

Drawing DrawColours(ExportJob& job)
{
    const Channel& channel = job.source.GetChannel();
    const Extent size = PlotSize(job, AspectRatio(channel.ReadAxis(pointAxis), channel.ReadAxis(lineAxis)));
    const auto field = std::make_shared<const Field>(job.source, Finest(size, job.picture));
    const Scale range =
        RangeOf(job.picture.contrast.value_or(Contrast()), field->Values(), job.source.SignalAxis().unit);
    if (!range.IsFinite()) {
        throw Failure(ExitCode::No, job.file, job.source.NothingToShow());
    }
    const Clipped clipped = BeyondRange(range, field->Values());
    NoteClipped(job, clipped);
    const bool axes = job.picture.axes;
    return {axes ? WithMargins(size) : size, range, [&job, field, range, size, clipped](Canvas& canvas) {
                const Cells cells{*field, range, job.picture};
                job.picture.axes ? DrawWithAxes(canvas, job, cells, size, clipped)
                                 : DrawAlone(canvas, job, cells, size);
            }};
}

} // namespace oxd
