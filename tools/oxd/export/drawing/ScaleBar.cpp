#include "oxd/export/drawing/ScaleBar.h"

#include <algorithm>
#include <cmath>

namespace oxd {

namespace {

constexpr double mostOfWidth = 0.3; // that the bar takes

// 1, 2 or 5 times a power of ten, and at most that large.
double RoundLength(double most)
{
    const double power = std::pow(10, std::floor(std::log10(most)));
    for (const double digit : {5.0, 2.0}) {
        if (digit * power <= most) {
            return digit * power;
        }
    }
    return power;
}

} // namespace

void DrawScaleBar(Canvas& canvas, const Rectangle& plot, const Scale& scale, const std::string& unit)
{
    const double span = std::fabs(scale.To() - scale.From());
    if (!std::isfinite(span) || !(span > 0)) {
        return;
    }
    const double length = RoundLength(mostOfWidth * span);
    const UnitText text({0, length}, unit);
    const std::string label = text.Labels({0, length}).back() + " " + text.Unit();
    constexpr double distance = 8, padding = 8, barHeight = 5, textHeight = 20;
    const double barWidth = plot.width * length / span;
    const Rectangle box{plot.x + plot.width - distance - barWidth - 2 * padding,
                        plot.y + plot.height - distance - textHeight - barHeight - padding, barWidth + 2 * padding,
                        textHeight + barHeight + padding};
    constexpr std::uint32_t white = 0xFFFFFFFF, black = 0xFF1A1A1A;
    canvas.Fill(box, white);
    canvas.Fill({box.x + padding, box.y + textHeight, barWidth, barHeight}, black);
    canvas.DrawText(label, box.x + box.width / 2, box.y + textHeight / 2, Anchor::Middle, box.width);
}

} // namespace oxd
