#include "oxd/picture/Ruler.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace oxd {

namespace {

// All in pixels.
constexpr double tickLength = 5;
constexpr double smallestTickDistance = 64;
constexpr double halfPixel = 0.5;
constexpr double titleOverhang = 80; // of a title beyond both ends of a short edge

int TicksAlong(double length)
{
    return std::max(2, static_cast<int>(length / smallestTickDistance));
}

// What follows the name of an axis.
std::string SuffixOf(const UnitText& text)
{
    const std::string unit = text.Unit().empty() ? "" : " [" + text.Unit() + "]";
    return text.Offset().empty() ? unit : unit + " " + text.Offset();
}

} // namespace

Ruler::Ruler(const Scale& scale, std::string name, const std::string& unit, double length, const std::string& note)
    : m_scale(scale), m_ticks(scale.Ticks(TicksAlong(length))), m_text(scale, unit), m_labels(m_text.Labels(m_ticks)),
      m_name(std::move(name)), m_suffix(note + SuffixOf(m_text)), m_length(length)
{
}

void Ruler::DrawBelow(Canvas& canvas, double x, double y) const
{
    constexpr double labelDistance = 16;
    constexpr double titleDistance = 42;
    ForEachTick([&](double place, const std::string& label) {
        canvas.DrawLine(std::floor(x + place) + halfPixel, y, 0, tickLength);
        canvas.DrawNumber(label, x + place, y + labelDistance, Anchor::Middle, smallestTickDistance);
    });
    canvas.DrawText(m_name, x + m_length / 2, y + titleDistance, Anchor::Middle, m_length + titleOverhang, m_suffix);
}

void Ruler::DrawLeft(Canvas& canvas, double x, double y) const
{
    constexpr double labelDistance = 9;
    constexpr double titleDistance = 58;
    constexpr double labelWidth = 39;
    ForEachTick([&](double place, const std::string& label) {
        canvas.DrawLine(x, HeightOf(y, place), -tickLength, 0);
        canvas.DrawNumber(label, x - labelDistance, HeightOf(y, place), Anchor::End, labelWidth);
    });
    canvas.DrawUpwardText(m_name, x - titleDistance, y + m_length / 2, m_length + titleOverhang, m_suffix);
}

void Ruler::DrawRight(Canvas& canvas, double x, double y) const
{
    constexpr double labelDistance = 9;
    constexpr double titleDistance = 70;
    constexpr double labelWidth = 50;
    ForEachTick([&](double place, const std::string& label) {
        canvas.DrawLine(x, HeightOf(y, place), tickLength, 0);
        canvas.DrawNumber(label, x + labelDistance, HeightOf(y, place), Anchor::Begin, labelWidth);
    });
    canvas.DrawUpwardText(m_name, x + titleDistance, y + m_length / 2, m_length + titleOverhang, m_suffix);
}

void Ruler::ForEachTick(const auto& draw) const
{
    for (std::size_t i = 0; i < m_ticks.size(); ++i) {
        draw(m_scale.Fraction(m_ticks[i]) * m_length, m_labels[i]);
    }
}

double Ruler::HeightOf(double y, double place) const
{
    return std::ceil(y + m_length - place) - halfPixel;
}

} // namespace oxd
