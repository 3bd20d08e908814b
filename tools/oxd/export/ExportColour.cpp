#include "oxd/export/ExportKinds.h"

#include "oxd/export/Canvas.h"
#include "oxd/export/ColourMap.h"
#include "oxd/export/Field.h"
#include "oxd/system/Failure.h"
#include "velstdlib/math/Round.h"

#include <algorithm>
#include <cmath>

namespace oxd {

namespace {

using veltaris::velstdlib::math::vel_round;

// Around the samples. They are the same for every text, so that pictures of one size lie on each other.
constexpr int leftMargin = 76;
constexpr int topMargin = 42;
constexpr int rightMargin = 136;
constexpr int bottomMargin = 62;

constexpr double tickLength = 5;
constexpr double tickDistance = 64; // pixels, at least
constexpr double halfPixel = 0.5;

// Height over width of the samples: true to scale where both axes are of a kind, within reason.
double AspectRatio(const Axis& x, const Axis& y)
{
    constexpr double curves = 0.75;
    constexpr double flattest = 0.125;
    const double ratio = std::fabs(y.range / x.range);
    const bool sameKind = x.unit == y.unit && !x.unit.empty();
    return sameKind && std::isfinite(ratio) && ratio > 0 ? std::clamp(ratio, flattest, 1 / flattest) : curves;
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

// A scale with its ticks and texts, drawn along an edge of `length` pixels.
class Ruler
{
public:
    Ruler(const Scale& scale, const std::string& name, const std::string& unit, double length)
        : m_scale(scale), m_ticks(scale.Ticks(std::max(2, static_cast<int>(length / tickDistance)))),
          m_text(scale, unit), m_labels(m_text.Labels(m_ticks)),
          m_title(m_text.Unit().empty() ? name : name + " [" + m_text.Unit() + "]"), m_length(length)
    {
    }

    void DrawBelow(Canvas& canvas, double x, double y) const
    {
        constexpr double labelDistance = 16;
        constexpr double titleDistance = 42;
        ForEachTick([&](double place, const std::string& label) {
            canvas.DrawLine(std::floor(x + place) + halfPixel, y, 0, tickLength);
            canvas.DrawText(label, x + place, y + labelDistance, Anchor::Middle, tickDistance);
        });
        canvas.DrawText(m_title, x + m_length / 2, y + titleDistance, Anchor::Middle, m_length);
    }

    void DrawLeft(Canvas& canvas, double x, double y) const
    {
        constexpr double labelDistance = 9;
        constexpr double titleDistance = 58;
        constexpr double labelRoom = 42;
        ForEachTick([&](double place, const std::string& label) {
            canvas.DrawLine(x, HeightOf(y, place), -tickLength, 0);
            canvas.DrawText(label, x - labelDistance, HeightOf(y, place), Anchor::End, labelRoom);
        });
        canvas.DrawUpwardText(m_title, x - titleDistance, y + m_length / 2, m_length);
    }

    void DrawRight(Canvas& canvas, double x, double y) const
    {
        constexpr double labelDistance = 9;
        constexpr double titleDistance = 70;
        constexpr double labelRoom = 50;
        ForEachTick([&](double place, const std::string& label) {
            canvas.DrawLine(x, HeightOf(y, place), tickLength, 0);
            canvas.DrawText(label, x + labelDistance, HeightOf(y, place), Anchor::Begin, labelRoom);
        });
        canvas.DrawUpwardText(m_title, x + titleDistance, y + m_length / 2, m_length);
    }

private:
    void ForEachTick(const auto& draw) const
    {
        for (std::size_t i = 0; i < m_ticks.size(); ++i) {
            draw(m_scale.Fraction(m_ticks[i]) * m_length, m_labels[i]);
        }
    }

    // Of a place that counts from the bottom, below the top edge `y`.
    double HeightOf(double y, double place) const { return std::ceil(y + m_length - place) - halfPixel; }

    Scale m_scale;
    std::vector<double> m_ticks;
    UnitText m_text;
    std::vector<std::string> m_labels;
    std::string m_title;
    double m_length;
};

// The first and the last sample are at the ends of the axis; their cells reach beyond by half of their size.
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
        throw Failure(ExitCode::No, job.file, "the channel has no samples to show");
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
    job.output.Write(canvas.ToPng());
}

} // namespace oxd
