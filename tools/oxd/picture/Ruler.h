// The scale beside a picture: ticks, their labels and a title, drawn along one edge.
#pragma once

#include "oxd/picture/Canvas.h"
#include "oxd/picture/Scale.h"

#include <string>
#include <vector>

namespace oxd {

// Spans an edge of `length` pixels, which the values of `scale` divide evenly, from left to right or from the bottom to
// the top. What it draws depends on the scale and the texts alone, and lies outside the edge, within the margins that
// the caller leaves. Numbers that are too long are narrowed, and names shortened, but neither their units nor `note`,
// which follows the name.
class Ruler
{
public:
    Ruler(const Scale& scale, std::string name, const std::string& unit, double length, const std::string& note = {});

    // `x` and `y` are the left end of a horizontal edge, and the top end of a vertical one.
    void DrawBelow(Canvas& canvas, double x, double y) const;
    void DrawLeft(Canvas& canvas, double x, double y) const;
    void DrawRight(Canvas& canvas, double x, double y) const;

private:
    void ForEachTick(const auto& draw) const;

    // The height on the canvas of a place that counts from the bottom of an edge whose top is at `y`.
    double HeightOf(double y, double place) const;

    Scale m_scale;
    std::vector<double> m_ticks;
    UnitText m_text;
    std::vector<std::string> m_labels; // one for each tick
    std::string m_name;
    std::string m_suffix;
    double m_length; // pixels
};

} // namespace oxd
