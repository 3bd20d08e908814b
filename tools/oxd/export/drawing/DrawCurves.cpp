#include "oxd/export/drawing/Curve.h"
#include "oxd/export/drawing/Drawing.h"
#include "oxd/export/drawing/Margins.h"
#include "oxd/export/options/LineChoice.h"
#include "oxd/picture/Canvas.h"
#include "oxd/picture/Ruler.h"
#include "oxd/system/Failure.h"
#include "oxd/system/Text.h"
#include "oxd/system/Unit.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <utility>

namespace oxd {

namespace {

// In pixels.
constexpr Extent usualPlot{640, 480};
constexpr double lineWidth = 1.5;

// So many curves have a colour and a place in the legend each.
constexpr std::size_t mostNamed = 10;

// Told apart by people who do not tell all hues apart, also by their lightness.
constexpr std::array<std::uint32_t, mostNamed> colours{0xFF1F4E9E, 0xFFD1651B, 0xFF2E8B57, 0xFFB3305F, 0xFF6FA8DC,
                                                       0xFF7A5C1E, 0xFF8E63B8, 0xFF111111, 0xFFE0A91B, 0xFF7F7F7F};

struct LegendEntry
{
    std::string label;
    std::uint32_t colour;
};

struct Curves
{
    std::vector<Curve> curves;
    std::vector<LegendEntry> legend; // empty where colours stand for the line axis
};

// What is shown of each channel.
struct Choice
{
    std::vector<std::uint64_t> lines;
    double offset = 0; // of each line above the one before
};

// The curves of one channel. Their colours are given by `colourOf(place of the line among those chosen)`.
void AddCurves(std::vector<Curve>& curves, LineSource& source, const Choice& choice, const auto& colourOf)
{
    for (std::size_t i = 0; i < choice.lines.size(); ++i) {
        const std::uint64_t line = choice.lines[i];
        std::vector<double> values = source.ReadShown(line);
        const double raised = choice.offset * static_cast<double>(i);
        std::ranges::transform(values, values.begin(), [raised](double value) { return value + raised; });
        curves.push_back({source.GetChannel().PointSpan(line), std::move(values), colourOf(i)});
    }
}

Curves NamedCurves(const std::vector<LineSource*>& sources, const Choice& choice)
{
    Curves all;
    for (LineSource* const source : sources) {
        const std::size_t first = all.curves.size();
        AddCurves(all.curves, *source, choice, [first](std::size_t i) { return colours.at(first + i); });
        const std::string name = sources.size() > 1 ? source->GetChannel().Name() : "line";
        for (std::size_t i = 0; i < choice.lines.size(); ++i) {
            all.legend.push_back({name + " " + std::to_string(choice.lines[i]), colours.at(first + i)});
        }
    }
    return all;
}

// A colour for each channel.
Curves GroupedCurves(const std::vector<LineSource*>& sources, const Choice& choice)
{
    Curves all;
    for (std::size_t i = 0; i < sources.size(); ++i) {
        const std::uint32_t colour = colours.at(i % colours.size());
        AddCurves(all.curves, *sources[i], choice, [colour](std::size_t /*line*/) { return colour; });
        all.legend.push_back({sources[i]->GetChannel().Name(), colour});
    }
    return all;
}

// The lightest and darkest colours of a map are hard to see.
double VisibleFraction(std::size_t index, std::size_t count)
{
    constexpr double lowest = 0.1, highest = 0.8;
    return count < 2 ? lowest
                     : lowest + (highest - lowest) * static_cast<double>(index) / static_cast<double>(count - 1);
}

Curves SeriesOfCurves(LineSource& source, const Choice& choice, ColourOf colour)
{
    Curves all;
    AddCurves(all.curves, source, choice,
              [&](std::size_t i) { return colour(VisibleFraction(i, choice.lines.size())); });
    return all;
}

Curves ReadCurves(ExportJob& job, const Choice& choice)
{
    std::vector<LineSource*> sources{&job.source};
    for (LineSource& other : job.others) {
        sources.push_back(&other);
    }
    if (sources.size() * choice.lines.size() <= mostNamed) {
        return NamedCurves(sources, choice);
    }
    return sources.size() > 1 ? GroupedCurves(sources, choice) : SeriesOfCurves(job.source, choice, job.picture.colour);
}

Scale PositionsOf(const std::vector<Curve>& curves)
{
    Scale scale = Scale::Nothing();
    for (const Curve& curve : curves) {
        scale.Include(curve.span.min);
        scale.Include(curve.span.min + curve.span.range);
    }
    const bool isReversed = !curves.empty() && curves.front().span.range < 0;
    return isReversed ? Scale(scale.To(), scale.From()) : scale;
}

// Leaves some room above and below the curves.
Scale ValuesOf(const ExportJob& job, const std::vector<Curve>& curves)
{
    std::vector<double> values;
    for (const Curve& curve : curves) {
        values.insert(values.end(), curve.values.begin(), curve.values.end());
    }
    const Scale range = RangeOf(job.picture.contrast.value_or(Contrast{0, 100}), values, job.source.SignalAxis().unit);
    constexpr double share = 0.04;
    const double room = job.picture.contrast || !range.IsFinite() ? 0 : share * (range.To() - range.From());
    return {range.From() - room, range.To() + room};
}

// In columns of pixels of the file.
void DrawColumns(Canvas& canvas, const Rectangle& plot, const Curve& curve, const Scale& x, const Scale& y)
{
    const double fineness = canvas.Shape().Fineness();
    const double width = fineness > 1 ? lineWidth : 1;
    double column = plot.x + (1 / fineness - width) / 2;
    for (const ColumnCover& cover : CoverOf(curve, x, y, plot.width * fineness, plot.height * fineness)) {
        if (!std::isnan(cover.top)) {
            const double height = (cover.bottom - cover.top) / fineness + lineWidth;
            canvas.Fill({column, plot.y + cover.top / fineness - lineWidth / 2, width, height}, curve.colour);
        }
        column += 1 / fineness;
    }
}

// A curve of a single point, which no line would show.
void DrawPoint(Canvas& canvas, const Rectangle& plot, const Curve& curve, const Scale& x, const Scale& y)
{
    constexpr double size = 5;
    const Point point = PointsOf(curve, x, y, plot.width, plot.height).front();
    if (!std::isnan(point.y)) {
        canvas.Fill({plot.x + point.x - size / 2, plot.y + point.y - size / 2, size, size}, curve.colour);
    }
}

void DrawCurve(Canvas& canvas, const Rectangle& plot, const Curve& curve, const Scale& x, const Scale& y)
{
    if (curve.values.size() == 1) {
        DrawPoint(canvas, plot, curve, x, y);
        return;
    }
    if (!canvas.Shape().IsVector()) {
        DrawColumns(canvas, plot, curve, x, y);
        return;
    }
    std::vector<Point> points = PointsOf(curve, x, y, plot.width, plot.height);
    for (Point& point : points) {
        point = {point.x + plot.x, point.y + plot.y};
    }
    canvas.DrawPolyline(points, lineWidth, curve.colour);
}

void DrawLegend(Canvas& canvas, double x, double y, const std::vector<LegendEntry>& legend)
{
    constexpr double swatch = 18, gap = 6, pitch = 20;
    for (const LegendEntry& entry : legend) {
        canvas.Fill({x, y - lineWidth, swatch, 2 * lineWidth}, entry.colour);
        canvas.DrawText(entry.label, x + swatch + gap, y, Anchor::Begin, rightMargin - swatch - 3 * gap);
        y += pitch;
    }
}

// Which colour each line of a series has.
void DrawSeriesBar(Canvas& canvas, const ExportJob& job, const Rectangle& bar, const std::vector<std::uint64_t>& lines)
{
    const Axis axis = job.source.GetChannel().ReadAxis(lineAxis);
    const auto steps = static_cast<int>(lines.size());
    canvas.DrawCells(bar, 1, steps, [&](int, int row) {
        return job.picture.colour(VisibleFraction(lines.size() - 1 - static_cast<std::size_t>(row), lines.size()));
    });
    canvas.DrawFrame(bar);
    const auto positionOf = [&](std::uint64_t line) {
        const std::uint64_t count = job.source.Lines();
        return count > 1 ? axis.min + axis.range * static_cast<double>(line) / static_cast<double>(count - 1)
                         : axis.min;
    };
    Ruler(Scale(positionOf(lines.front()), positionOf(lines.back())), axis.name, axis.unit, bar.height)
        .DrawRight(canvas, bar.x + bar.width, bar.y);
}

Extent PlotOf(const ExportJob& job)
{
    const std::optional<PictureSize>& size = job.picture.size;
    constexpr double ratio = static_cast<double>(usualPlot.rows) / usualPlot.columns;
    const double fineness = job.picture.ShapeOf(1, 1).Fineness();
    return size ? PlotWithin(*size, margins, ratio, fineness) : usualPlot;
}

// What a picture of curves shows.
struct CurvePlot
{
    Curves all;
    Scale x, y;
    Choice choice;
};

std::string NoteOf(double offset, const std::string& unit)
{
    if (offset == 0) {
        return {};
    }
    return (offset < 0 ? ", each line \u2212 " : ", each line + ") + ToText(std::fabs(offset), unit);
}

void DrawPlot(Canvas& canvas, const ExportJob& job, const CurvePlot& shown, const Rectangle& plot)
{
    const Axis point = job.source.GetChannel().ReadAxis(pointAxis);
    const Axis signal = job.source.SignalAxis();
    std::string names = signal.name;
    for (const LineSource& other : job.others) {
        names += ", " + other.GetChannel().Name();
    }
    DrawTitle(canvas, plot, job);
    for (const Curve& curve : shown.all.curves) {
        DrawCurve(canvas, plot, curve, shown.x, shown.y);
    }
    canvas.DrawFrame(plot);
    Ruler(shown.x, point.name, point.unit, plot.width).DrawBelow(canvas, plot.x, plot.y + plot.height);
    Ruler(shown.y, names, signal.unit, plot.height, NoteOf(shown.choice.offset, signal.unit))
        .DrawLeft(canvas, plot.x, plot.y);
    constexpr double distance = 22, barWidth = 20;
    if (shown.all.legend.empty()) {
        DrawSeriesBar(canvas, job, {plot.x + plot.width + distance, plot.y, barWidth, plot.height}, shown.choice.lines);
    } else {
        DrawLegend(canvas, plot.x + plot.width + distance / 2, plot.y + distance / 2, shown.all.legend);
    }
}

} // namespace

bool IsOfCurves(const Channel& channel)
{
    constexpr std::uint64_t mostOfAProfile = 2; // lines
    return channel.Lines() <= mostOfAProfile ||
           (channel.ReadAxis(lineAxis).unit.empty() && !channel.ReadAxis(pointAxis).unit.empty());
}

Drawing DrawCurves(ExportJob& job)
{
    Choice choice{ChooseLines(job.picture.lines, job.source.Lines())};
    if (job.picture.offset) {
        choice.offset = InUnit(*job.picture.offset, job.source.SignalAxis().unit, "offset");
    }
    Curves all = ReadCurves(job, choice);
    const Scale x = PositionsOf(all.curves);
    const Scale y = ValuesOf(job, all.curves);
    if (!y.IsFinite()) {
        throw Failure(ExitCode::No, job.file, job.source.NothingToShow());
    }
    const Extent size = PlotOf(job);
    const Rectangle plot{leftMargin, topMargin, static_cast<double>(size.columns), static_cast<double>(size.rows)};
    const auto shown = std::make_shared<const CurvePlot>(CurvePlot{std::move(all), x, y, std::move(choice)});
    return {WithMargins(size), y, [&job, shown, plot](Canvas& canvas) { DrawPlot(canvas, job, *shown, plot); }};
}

} // namespace oxd
