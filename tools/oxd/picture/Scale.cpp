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

// A number without the zeros at the end of its decimals.
std::string WithoutZeros(std::string number)
{
    if (number.find('.') != std::string::npos) {
        number.erase(number.find_last_not_of('0') + 1);
        number.erase(number.find_last_not_of('.') + 1);
    }
    return number;
}

// A number that stands alone, without a step that would tell how finely it is to be told.
std::string WithFewDigits(double number)
{
    const double magnitude = std::fabs(number);
    const int decimals = magnitude >= 100 ? 1 : magnitude >= 10 ? 2 : 3;
    return WithoutZeros(Fixed(number, decimals));
}

std::vector<double> Multiples(double step, double low, double high)
{
    constexpr double tolerance = 1e-6; // of a step, so that rounding costs no tick at an end of the range
    const auto last = vel_round(std::floor(high / step + tolerance));
    std::vector<double> multiples;
    for (auto i = vel_round(std::ceil(low / step - tolerance)); i <= last; ++i) {
        multiples.push_back(static_cast<double>(i) * step);
    }
    return multiples;
}

// The power of ten whose multiples tell parts of a scale apart.
double PowerOfWidth(const Scale& scale)
{
    return std::pow(10, std::ceil(std::log10(std::fabs(scale.To() - scale.From()))));
}

// What all values of a scale have in common, if their labels are short without that: a multiple of the power above.
double CommonPart(const Scale& scale)
{
    constexpr double leastShare = 1000; // of the width
    const double width = std::fabs(scale.To() - scale.From());
    if (!scale.IsFinite() || !(width > 0) || !(scale.Magnitude() >= leastShare * width)) {
        return 0;
    }
    const double power = PowerOfWidth(scale);
    return std::round((scale.From() / 2 + scale.To() / 2) / power) * power;
}

int DecimalsOf(double step)
{
    constexpr double roundingError = 1e-6;
    return std::max(0, -static_cast<int>(std::floor(std::log10(step) + roundingError)));
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
    constexpr double towardsNext = 2.6; // leads from each round number to the one below
    constexpr double finest = 1e-12;    // in relation to the values: closer ones are made of rounding errors
    double step = RoundStep((high - low) / wanted);
    while (step > finest * Magnitude() && std::isfinite(step)) {
        std::vector<double> ticks = Multiples(step, low, high);
        if (ticks.size() > 1) {
            return ticks;
        }
        step = RoundStep(step / towardsNext);
    }
    return {m_from};
}

UnitText::UnitText(const Scale& scale, const std::string& unit) : m_offset(CommonPart(scale))
{
    ChooseUnit(std::max(std::fabs(scale.From() - m_offset), std::fabs(scale.To() - m_offset)), unit);
    if (m_offset != 0) {
        const UnitMultiple multiple = TakesPrefix(unit) ? WithPrefix(unit, std::fabs(m_offset)) : UnitMultiple{1, unit};
        const int decimals = DecimalsOf(PowerOfWidth(scale) * multiple.factor);
        m_offsetText.append(m_offset < 0 ? minus : "+").append(" ");
        m_offsetText += WithoutZeros(Fixed(std::fabs(m_offset * multiple.factor), decimals));
        m_offsetText += multiple.text.empty() ? "" : " " + multiple.text;
    }
}

void UnitText::ChooseUnit(double magnitude, const std::string& unit)
{
    constexpr double readableFrom = 1e-2;
    constexpr double readableTo = 1e4;
    m_unit = unit;
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
    const auto label = [&](double value) {
        const double number = (value - m_offset) * m_factor;
        return step > 0 ? Fixed(number, DecimalsOf(step)) : WithFewDigits(number);
    };
    std::vector<std::string> labels(values.size());
    std::transform(values.begin(), values.end(), labels.begin(), label);
    return labels;
}

} // namespace oxd
