#include "truth/Chart.h"

#include "truth/Statistics.h"

#include <array>
#include <cmath>
#include <cstdio>

namespace truth {

namespace {

constexpr double left = 70, right = 520, top = 20, bottom = 340;
constexpr double lowestPercent = 1e-3, highestPercent = 100;
constexpr std::array<const char*, quantityCount> colours{"#2970ad", "#cc6b33", "#3c8c46", "#7a4fa3"};

template <class... Values>
std::string Text(const char* format, Values... values)
{
    std::array<char, 256> text{};
    std::snprintf(text.data(), text.size(), format, values...);
    return text.data();
}

double Share(double value, double lowest, double highest)
{
    return std::log(std::min(std::max(value, lowest), highest) / lowest) / std::log(highest / lowest);
}

double X(double ratio)
{
    return left + (right - left) * Share(ratio, signalToNoise.front(), signalToNoise.back());
}

double Y(double percent)
{
    return bottom - (bottom - top) * Share(percent, lowestPercent, highestPercent);
}

std::string Label(double x, double y, const char* anchor, const std::string& text)
{
    return Text(R"(<text x="%.1f" y="%.1f" text-anchor="%s">)", x, y, anchor) + text + "</text>\n";
}

std::string Grid()
{
    const auto line = [](double x1, double y1, double x2, double y2) {
        return Text(R"(<path d="M%.1f %.1fL%.1f %.1f" stroke="#d9d9d9"/>)", x1, y1, x2, y2) + "\n";
    };
    std::string grid;
    for (const double percent : {0.001, 0.01, 0.1, 1.0, 10.0, 100.0})
        grid +=
            line(left, Y(percent), right, Y(percent)) + Label(left - 8, Y(percent) + 4, "end", Text("%g %%", percent));
    for (const double ratio : signalToNoise)
        grid += line(X(ratio), top, X(ratio), bottom) + Label(X(ratio), bottom + 18, "middle", Text("%g", ratio));
    return grid + Label((left + right) / 2, bottom + 38, "middle", "largest deflection / noise");
}

// The spread as a line, the size of the bias as a dashed one.
std::string Curves(Quantity quantity, const std::vector<CTrial>& trials)
{
    std::string spread, bias;
    for (const double ratio : signalToNoise) {
        const auto belongs = [=](const CTrial& trial) { return trial.signalToNoise == ratio; };
        const CStatistics s = StatisticsOf(quantity, trials, belongs);
        const double percent = quantities[quantity].percent;
        const char* const step = spread.empty() ? "M" : "L";
        if (s.given > 0.5) {
            spread += Text("%s%.1f %.1f", step, X(ratio), Y(percent * s.spread));
            bias += Text("%s%.1f %.1f", step, X(ratio), Y(percent * std::abs(s.bias)));
        }
    }
    const auto path = [&](const std::string& data, const char* dashes) {
        return R"(<path d=")" + data +
               Text(R"(" fill="none" stroke="%s" stroke-width="2" stroke-dasharray="%s"/>)", colours[quantity],
                    dashes) +
               "\n";
    };
    return path(spread, "none") + path(bias, "3 4");
}

std::string Legend()
{
    std::string legend;
    for (std::size_t i = 0; i < quantityCount; ++i) {
        const double y = top + 20 + 22 * static_cast<double>(i);
        legend += Text(R"(<rect x="%.0f" y="%.0f" width="14" height="4" fill="%s"/>)", right + 18, y - 6, colours[i]) +
                  "\n" + Label(right + 40, y, "start", quantities[i].name);
    }
    return legend + Label(right + 18, top + 126, "start", "lines: spread") +
           Label(right + 18, top + 146, "start", "dashed: bias");
}

} // namespace

std::string Chart(const std::vector<CTrial>& trials)
{
    std::string chart = "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"670\" height=\"400\" "
                        "font-family=\"sans-serif\" font-size=\"12\" fill=\"#212121\">\n"
                        "<rect width=\"670\" height=\"400\" fill=\"#ffffff\"/>\n" +
                        Grid();
    for (int quantity = 0; quantity < quantityCount; ++quantity)
        chart += Curves(static_cast<Quantity>(quantity), trials);
    return chart + Legend() + "</svg>\n";
}

} // namespace truth
