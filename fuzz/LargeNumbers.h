// Which files a fuzzer leaves to others.
#pragma once

#include <algorithm>
#include <string_view>

// Whether a count or a size, whose key ends with "Count", "Lines" or "Points" in any case, begins with four digits or
// more. So many groups, or lines that are all saved, take so long that little else would be tried; what large numbers
// do is looked at by the sweep of numbers.
inline bool HasLargeNumber(std::string_view bytes)
{
    constexpr std::string_view lastOfKeys = "tTsS";
    constexpr std::size_t digits = 4;
    for (auto at = bytes.find('='); at != std::string_view::npos; at = bytes.find('=', at + 1)) {
        const std::string_view value = bytes.substr(at + 1, digits);
        const bool isSize = at > 0 && lastOfKeys.find(bytes[at - 1]) != std::string_view::npos;
        if (isSize && value.size() == digits && std::ranges::all_of(value, [](char c) { return c >= '0' && c <= '9'; }))
            return true;
    }
    return false;
}
