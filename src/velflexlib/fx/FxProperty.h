// Parameters with a unit, and their texts, such as "2.5 nm".
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace veltaris::velflexlib::fx {

// A value and its unit. The unit has no SI prefix: the value accounts for it. A plain value without thread rules of its
// own; the functions below are thread-safe.
struct CFxProperty
{
    double value = 0;
    std::string unit;

    bool operator==(const CFxProperty&) const = default;
};

// Parses a finite decimal number, which may be followed by an SI prefix, a unit or both, with or without white space in
// between: both "2.5nm" and "2.5 nm" are 2.5e-9 in "m". Returns nothing for any other text.
std::optional<CFxProperty> ParseFxProperty(std::string_view text);

// Returns a text that parses to the same unit, and to the value rounded to 6 significant digits.
std::string FormatFxProperty(const CFxProperty& property);

} // namespace veltaris::velflexlib::fx
