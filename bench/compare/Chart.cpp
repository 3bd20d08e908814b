#include "compare/Report.h"

#include <cairo-svg.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <numbers>

namespace bench {

namespace {

constexpr double rowHeight = 22;
constexpr double labelWidth = 250;
constexpr double plotWidth = 450;
constexpr double margin = 30;
constexpr double lowestRatio = 0.1;
constexpr double highestRatio = 30;

struct Colour
{
    double red, green, blue;
};

constexpr Colour barColour{0.16, 0.44, 0.68};
constexpr Colour missedColour{0.80, 0.42, 0.20};
constexpr Colour peerColour{0.45, 0.45, 0.45};
constexpr Colour gridColour{0.85, 0.85, 0.85};
constexpr Colour textColour{0.13, 0.13, 0.13};

double PositionOf(double ratio)
{
    const double share = std::log(std::clamp(ratio, lowestRatio, highestRatio) / lowestRatio);
    return labelWidth + plotWidth * share / std::log(highestRatio / lowestRatio);
}

class CCanvas
{
public:
    CCanvas(const std::string& path, double height)
        : m_surface(cairo_svg_surface_create(path.c_str(), labelWidth + plotWidth + 2 * margin, height),
                    cairo_surface_destroy),
          m_context(cairo_create(m_surface.get()), cairo_destroy)
    {
        cairo_select_font_face(m_context.get(), "sans-serif", CAIRO_FONT_SLANT_NORMAL, CAIRO_FONT_WEIGHT_NORMAL);
        cairo_set_font_size(m_context.get(), 12);
        Use({1, 1, 1});
        cairo_paint(m_context.get());
    }

    void Text(double x, double y, const std::string& text)
    {
        Use(textColour);
        cairo_move_to(m_context.get(), x, y);
        cairo_show_text(m_context.get(), text.c_str());
    }

    void Bar(double x, double y, double width, double height, const Colour& colour)
    {
        Use(colour);
        cairo_rectangle(m_context.get(), x, y, width, height);
        cairo_fill(m_context.get());
    }

    void Dot(double x, double y, const Colour& colour)
    {
        Use(colour);
        cairo_arc(m_context.get(), x, y, 3.5, 0, 2 * std::numbers::pi);
        cairo_fill(m_context.get());
    }

private:
    void Use(const Colour& c) { cairo_set_source_rgb(m_context.get(), c.red, c.green, c.blue); }

    std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)> m_surface;
    std::unique_ptr<cairo_t, decltype(&cairo_destroy)> m_context;
};

void DrawGrid(CCanvas& canvas, double bottom)
{
    for (const double ratio : {0.1, 0.3, 1.0, 3.0, 10.0, 30.0}) {
        const double x = PositionOf(ratio);
        canvas.Bar(x, margin, ratio == 1 ? 2 : 1, bottom - margin, gridColour);
        std::array<char, 16> label{};
        std::snprintf(label.data(), label.size(), "%g", ratio);
        canvas.Text(x - 8, margin - 6, label.data());
    }
}

void DrawRow(CCanvas& canvas, const Result& result, double baselineMedian, double top)
{
    const bool met = std::ranges::all_of(result.verdicts, &Verdict::Met);
    const double middle = top + rowHeight / 2;
    canvas.Text(4, middle + 4, result.benchmark);
    canvas.Bar(labelWidth, top + 4, PositionOf(result.Ours() / baselineMedian) - labelWidth, rowHeight - 8,
               met ? barColour : missedColour);
    for (const Figure& figure : result.figures) {
        if (figure.name != ours && figure.name != baselineName)
            canvas.Dot(PositionOf(figure.median / baselineMedian), middle, peerColour);
    }
    for (const Verdict& verdict : result.verdicts) {
        if (verdict.goal.against == Against::Baseline)
            canvas.Bar(PositionOf(verdict.goal.atMost) - 1, top + 1, 2, rowHeight - 2, textColour);
    }
}

} // namespace

void DrawChart(const std::string& path, const std::vector<Result>& results)
{
    std::vector<const Result*> rows;
    for (const Result& result : results) {
        if (result.Baseline())
            rows.push_back(&result);
    }
    const double bottom = margin + rowHeight * static_cast<double>(rows.size());
    CCanvas canvas(path, bottom + margin);
    DrawGrid(canvas, bottom);
    double top = margin;
    for (const Result* row : rows) {
        DrawRow(canvas, *row, *row->Baseline(), top);
        top += rowHeight;
    }
    canvas.Text(
        4, bottom + 18,
        "Time as a multiple of the hand-written baseline's. Bars: VELOxd; strokes: goals; dots: other libraries.");
}

} // namespace bench
