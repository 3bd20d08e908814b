// What one damaged byte makes of a text, and of what it may have been made. The functions keep no state.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace veltaris::salvage {

inline constexpr std::string_view decimalDigits = "0123456789";

// Whether one byte changed, lost or put in makes one text of the other. A text is no edit of itself.
bool IsOneEdit(std::string_view a, std::string_view b);

// The whole numbers, as they are written, that are one edit away from the text.
std::vector<std::string> NumbersNear(std::string_view text);

} // namespace veltaris::salvage
