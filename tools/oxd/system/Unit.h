// Multiples of units that suit the numbers in them, such as nanometres for atomic steps.
#pragma once

#include <optional>
#include <string>

namespace oxd {

struct UnitMultiple
{
    double factor;    // by which a number in the unit is multiplied to be one in the multiple
    std::string text; // the multiple, for example "nm"
};

// The end of the unit of differences between neighbouring points.
inline constexpr const char* perPoint = "/point";

// Whether prefixes are known to go with the unit, which may be one per point. Any other may have one already, as "nm"
// has.
bool TakesPrefix(const std::string& unit);

// The multiple of a unit that takes prefixes in which a number of that magnitude has one to three digits before its
// point, from atto to giga.
UnitMultiple WithPrefix(const std::string& unit, double magnitude);

// How many metres the unit is, if it is the metre with a prefix or without.
std::optional<double> MetresOf(const std::string& unit);

// A number in the multiple of its unit that suits it, such as "310 nm".
std::string ToText(double number, const std::string& unit);

// The exponent of ten of the largest power of 1000 that is not more than `magnitude`; 0 for what has none.
int ExponentOf(double magnitude);

} // namespace oxd
