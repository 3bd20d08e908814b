#include "oxd/picture/Scale.h"

#include "velstdlib/math/Round.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <string_view>

namespace oxd {

namespace {

using veltaris::velstdlib::math::vel_round;

// The units that take a prefix. Any other may have one already, as "nm" has.
constexpr std::array<std::string_view, 17> prefixable{"m", "s", "A", "V", "N", "Hz", "W", "J", "K",
                                                      "C", "F", "T", "S", "H", "Pa", "Ω", "eV"};

struct Prefix
{
    int exponent;
    std::string_view text;
};

constexpr std::array prefixes{Prefix{-18, "a"}, Prefix{-15, "f"}, Prefix{-12, "p"}, Prefix{-9, "n"}, Prefix{-6, "µ"},
                              Prefix{-3, "m"},  Prefix{0, ""},    Prefix{3, "k"},   Prefix{6, "M"},  Prefix{9, "G"}};

// The largest power of 1000 that is not more than `magnitude`.
int Exponent(double magnitude)
{
    constexpr double roundingError = 1e-9;
    return magnitude > 0 && std::isfinite(magnitude)
               ? 3 * static_cast<int>(std::floor(std::log10(magnitude) / 3 + roundingError))
               : 0;
}

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
    const int exponent = std::clamp(Exponent(magnitude), prefixes.front().exponent, prefixes.back().exponent);
    const auto* const prefix =
        std::find_if(prefixes.begin(), prefixes.end(), [&](const Prefix& known) { return known.exponent == exponent; });
    const bool takesPrefix = std::find(prefixable.begin(), prefixable.end(), unit) != prefixable.end();
    constexpr double readableFrom = 1e-2;
    constexpr double readableTo = 1e4;
    if (takesPrefix) {
        m_unit = std::string(prefix->text) + unit;
        m_factor = std::pow(10, -exponent);
    } else if (magnitude > 0 && (magnitude < readableFrom || magnitude >= readableTo)) {
        m_unit = "1e" + std::to_string(Exponent(magnitude)) + (unit.empty() ? "" : " " + unit);
        m_factor = std::pow(10, -Exponent(magnitude));
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
