// Numbers and units with SI prefixes: "nm" is the prefix "n" before the unit "m", "2.5n" is 2.5e-9. No locale takes
// part, and the functions may be called by several threads at once.
#pragma once

#include <optional>
#include <string_view>

namespace veltaris::velstdlib::math {

// The prefix that the text begins with, or an empty text: one of y z a f p n µ m k M G T P E Z Y, or a blank, which
// stands for 1. The micro sign and the Greek letter mu are the same prefix.
std::string_view LeadingSIPrefix(std::string_view text);

// A decimal number with at most one prefix behind it, scaled by that; nothing when the text is something else. "2.5k"
// is 2500.
std::optional<double> ParseSINumber(std::string_view text);

} // namespace veltaris::velstdlib::math
