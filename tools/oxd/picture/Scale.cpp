#include "oxd/picture/Scale.h"

#include "oxd/system/Unit.h"
#include "velstdlib/math/Round.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <string_view>

namespace oxd {

namespace {

using veltaris::velstdlib::math::vel_round;

// The smallest number that is not less than `step` and is 1, 2 or 5 times a power of ten.
double RoundStep(double step)
{
    const double power = std::pow(10, std::floor(std::log10(step)));
    for (const double digit : {1.0, 2.0, 5.0}) {
        constexpr double roundingError = 1e-9;
        if (step <= digit * power * (1 + roundingError)) {
            return digit * power;
        }
    }
    return 10 * power;
}

constexpr std::string_view minus = "−"; // as wide as a digit

std::string Fixed(double number, int decimals)
{
    std::array<char, 512> buffer{};
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), std::fabs(number),
                                   std::chars_format::fixed, decimals);
    return (number < 0 ? std::string(minus) : std::string()).append(buffer.data(), end.ptr);
}

} // namespace

void Scale::Include(double value)
{
    m_from = value < m_from ? value : m_from;
    m_to = value > m_to ? value : m_to;
}

double Scale::Fraction(double value) const
{
    return m_from == m_to ? 0.5 : std::clamp((value - m_from) / (m_to - m_from), 0.0, 1.0);
}

std::vector<double> Scale::Ticks(int wanted) const
{
    if (!IsFinite()) {
        return {};
    }
    const double low = std::min(m_from, m_to);
    const double high = std::max(m_from, m_to);
    const double step = RoundStep((high - low) / wanted);
    constexpr double finest = 1e-9; // in relation to the values: labels of closer ticks would look alike
    if (!(step > finest * Magnitude()) || !std::isfinite(step)) {
        return {m_from};
    }
    constexpr double tolerance = 1e-6; // of a step, so that rounding costs no tick at an end of the range
    const auto last = vel_round(std::floor(high / step + tolerance));
    std::vector<double> ticks;
    for (auto i = vel_round(std::ceil(low / step - tolerance)); i <= last; ++i) {
        ticks.push_back(static_cast<double>(i) * step);
    }
    return ticks.empty() ? std::vector<double>{m_from} : ticks;
}

UnitText::UnitText(const Scale& scale, const std::string& unit) : m_unit(unit)
{
    const double magnitude = scale.Magnitude();
    constexpr double readableFrom = 1e-2;
    constexpr double readableTo = 1e4;
    if (TakesPrefix(unit)) {
        const UnitMultiple multiple = WithPrefix(unit, magnitude);
        m_unit = multiple.text;
        m_factor = multiple.factor;
    } else if (magnitude > 0 && (magnitude < readableFrom || magnitude >= readableTo)) {
        m_unit = "1e" + std::to_string(ExponentOf(magnitude)) + (unit.empty() ? "" : " " + unit);
        m_factor = std::pow(10, -ExponentOf(magnitude));
    }
}

std::vector<std::string> UnitText::Labels(const std::vector<double>& values) const
{
    const double step = values.size() > 1 ? std::fabs(values[1] - values[0]) * m_factor : 0;
    constexpr int decimalsOfOne = 3;
    constexpr double roundingError = 1e-6;
    const int decimals =
        step > 0 ? std::max(0, -static_cast<int>(std::floor(std::log10(step) + roundingError))) : decimalsOfOne;
    std::vector<std::string> labels(values.size());
    std::transform(values.begin(), values.end(), labels.begin(),
                   [&](double value) { return Fixed(value * m_factor, decimals); });
    return labels;
}

} // namespace oxd
