#include "oxd/system/Unit.h"

#include "oxd/system/Text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>

namespace oxd {

namespace {

constexpr std::array<std::string_view, 17> prefixable{"m", "s", "A", "V", "N", "Hz", "W", "J", "K",
                                                      "C", "F", "T", "S", "H", "Pa", "Ω", "eV"};

struct Prefix
{
    int exponent;
    std::string_view text;
};

constexpr std::array prefixes{Prefix{-18, "a"}, Prefix{-15, "f"}, Prefix{-12, "p"}, Prefix{-9, "n"}, Prefix{-6, "µ"},
                              Prefix{-3, "m"},  Prefix{0, ""},    Prefix{3, "k"},   Prefix{6, "M"},  Prefix{9, "G"}};

} // namespace

bool TakesPrefix(const std::string& unit)
{
    const std::string_view whole = unit;
    const std::string_view base = whole.ends_with(perPoint) ? whole.substr(0, whole.rfind('/')) : whole;
    return std::find(prefixable.begin(), prefixable.end(), base) != prefixable.end();
}

UnitMultiple WithPrefix(const std::string& unit, double magnitude)
{
    const int exponent = std::clamp(ExponentOf(magnitude), prefixes.front().exponent, prefixes.back().exponent);
    const auto* const prefix =
        std::find_if(prefixes.begin(), prefixes.end(), [&](const Prefix& known) { return known.exponent == exponent; });
    return {std::pow(10, -exponent), std::string(prefix->text) + unit};
}

std::optional<double> MetresOf(const std::string& unit)
{
    const std::string known = unit == "\u03BCm" ? "µm" : unit; // the Greek letter instead of the sign
    const auto* const prefix = std::find_if(prefixes.begin(), prefixes.end(), [&](const Prefix& candidate) {
        return std::string(candidate.text) + "m" == known;
    });
    return prefix == prefixes.end() ? std::nullopt : std::optional(std::pow(10, prefix->exponent));
}

std::string ToText(double number, const std::string& unit)
{
    if (unit.empty()) {
        return ToText(number);
    }
    const UnitMultiple multiple = TakesPrefix(unit) ? WithPrefix(unit, std::fabs(number)) : UnitMultiple{1, unit};
    return ToText(number * multiple.factor) + " " + multiple.text;
}

int ExponentOf(double magnitude)
{
    constexpr double roundingError = 1e-9;
    return magnitude > 0 && std::isfinite(magnitude)
               ? 3 * static_cast<int>(std::floor(std::log10(magnitude) / 3 + roundingError))
               : 0;
}

} // namespace oxd
