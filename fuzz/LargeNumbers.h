// Which files a fuzzer leaves to others.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

// What is replayed is tried whatever it has.
constexpr bool IsFuzzing()
{
#ifdef VELOXD_FUZZ
    return true;
#else
    return false;
#endif
}

// Whether a count or a size, whose key ends with "Count", "Lines" or "Points" in any case, begins with four digits or
// more. So many groups, or lines that are all saved, take so long that little else would be tried; what large numbers
// do is looked at by the sweep of numbers.
inline bool HasLargeNumber(std::string_view bytes)
{
    constexpr std::array<std::string_view, 3> ends{"count", "lines", "points"};
    constexpr std::size_t digits = 4;
    const auto endsKey = [&](std::size_t at, std::string_view end) {
        return at >= end.size() && std::ranges::equal(bytes.substr(at - end.size(), end.size()), end,
                                                      [](char c, char lower) { return (c | ' ') == lower; });
    };
    for (auto at = bytes.find('='); at != std::string_view::npos; at = bytes.find('=', at + 1)) {
        const std::string_view value = bytes.substr(at + 1, digits);
        const bool isSize = std::ranges::any_of(ends, [&](std::string_view end) { return endsKey(at, end); });
        if (isSize && value.size() == digits && std::ranges::all_of(value, [](char c) { return c >= '0' && c <= '9'; }))
            return true;
    }
    return false;
}
