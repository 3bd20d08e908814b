#include "oxd/export/options/Contrast.h"

#include "oxd/export/options/Quantity.h"
#include "oxd/system/Failure.h"
#include "velstdlib/math/Round.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <utility>

namespace oxd {

namespace {

using veltaris::velstdlib::math::vel_round;

constexpr std::string_view percentiles = "percentile:";

[[noreturn]] void ThrowNoRange(std::string_view text)
{
    throw Failure(ExitCode::Usage, "range \"" + std::string(text) + "\"",
                  "is none of full, percentile:LOW,HIGH and MIN:MAX, such as -2nm:2nm");
}

// What stands behind the digits.
std::string_view UnitOf(std::string_view text)
{
    double number = 0;
    const auto* const end = std::from_chars(text.data(), text.data() + text.size(), number).ptr;
    return text.substr(static_cast<std::size_t>(end - text.data()));
}

// The two numbers beside a separator. The first may leave its unit to the second.
std::pair<Quantity, Quantity> ParsePair(std::string_view whole, std::string_view pair, char separator)
{
    const std::size_t middle = std::min(pair.find(separator), pair.size());
    const std::string_view last = pair.substr(std::min(middle + 1, pair.size()));
    std::string begin(pair.substr(0, middle));
    if (UnitOf(begin).empty()) {
        begin += UnitOf(last);
    }
    const auto first = ParseQuantity(begin);
    const auto second = ParseQuantity(last);
    if (!first || !second) {
        ThrowNoRange(whole);
    }
    return {*first, *second};
}

Contrast ParsePercentiles(std::string_view text)
{
    const auto [low, high] = ParsePair(text, text.substr(percentiles.size()), ',');
    const bool hasUnit = !low.unit.empty() || !high.unit.empty();
    if (hasUnit || !(0 <= low.value && low.value < high.value && high.value <= 100)) {
        throw Failure(ExitCode::Usage, "range \"" + std::string(text) + "\"",
                      "needs two percentages from 0 to 100, the lower one first");
    }
    return {low.value, high.value};
}

Contrast ParseRange(std::string_view text)
{
    const auto [from, to] = ParsePair(text, text, ':');
    const bool isSame = from.unit == to.unit;
    if (!isSame || !(from.value < to.value)) {
        throw Failure(ExitCode::Usage, "range \"" + std::string(text) + "\"",
                      isSame ? "needs the lower value first" : "has two units");
    }
    return {0, 100, Scale(from.value, to.value), to.unit};
}

double Percentile(std::vector<double>& values, double percent)
{
    const auto place = vel_round(static_cast<double>(values.size() - 1) * percent / 100);
    std::nth_element(values.begin(), values.begin() + place, values.end());
    return values[static_cast<std::size_t>(place)];
}

} // namespace

Contrast ParseContrast(std::string_view text)
{
    if (text == "full") {
        return {0, 100};
    }
    return text.starts_with(percentiles) ? ParsePercentiles(text) : ParseRange(text);
}

Scale RangeOf(const Contrast& contrast, std::vector<double> values, const std::string& unit)
{
    std::erase_if(values, [](double value) { return std::isnan(value); });
    if (values.empty()) {
        return Scale::Nothing();
    }
    if (contrast.range) {
        const auto inUnit = [&](double end) { return InUnit({end, contrast.unit}, unit, "range"); };
        return {inUnit(contrast.range->From()), inUnit(contrast.range->To())};
    }
    return {Percentile(values, contrast.lowestPercent), Percentile(values, contrast.highestPercent)};
}

Clipped BeyondRange(const Scale& range, const std::vector<double>& values)
{
    double count = 0, below = 0, above = 0;
    for (const double value : values) {
        count += std::isnan(value) ? 0 : 1;
        below += value < range.From() ? 1 : 0;
        above += value > range.To() ? 1 : 0;
    }
    return count > 0 ? Clipped{below / count, above / count} : Clipped{};
}

} // namespace oxd
