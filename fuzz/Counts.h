// Which files a fuzzer leaves to others.
#pragma once

#include <algorithm>
#include <string_view>

// Whether a key ends with "Count", in any case, and its value begins with four digits or more. So many groups take so
// long that little else would be tried; what large counts do is looked at by the sweep of numbers.
inline bool HasLargeCount(std::string_view bytes)
{
    constexpr std::size_t digits = 4;
    for (auto at = bytes.find('='); at != std::string_view::npos; at = bytes.find('=', at + 1)) {
        const std::string_view value = bytes.substr(at + 1, digits);
        const bool isCount = at > 0 && (bytes[at - 1] == 't' || bytes[at - 1] == 'T');
        if (isCount && value.size() == digits &&
            std::ranges::all_of(value, [](char c) { return c >= '0' && c <= '9'; }))
            return true;
    }
    return false;
}
