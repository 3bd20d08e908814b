// Parameters with a unit, as texts such as "2.5 nm".
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace veltaris::velflexlib::fx {

// A value, and the unit that it is in, without an SI prefix.
struct CFxProperty
{
    double value = 0;
    std::string unit;

    bool operator==(const CFxProperty&) const = default;
};

// A finite decimal number, and behind it, with or without white space, perhaps an SI prefix and perhaps a unit: both
// "2.5nm" and "2.5 nm" are 2.5e-9 in "m". Nothing when the text is something else.
std::optional<CFxProperty> ParseFxProperty(std::string_view text);

// A text that parses to the same unit, and to the value in 6 significant digits.
std::string FormatFxProperty(const CFxProperty& property);

} // namespace veltaris::velflexlib::fx
