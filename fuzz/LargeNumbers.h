// Keeps a fuzzer from inputs with large numbers, which take so long that it would try little else. The content sweep
// covers such numbers.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

// Only a fuzzer skips inputs; a replay tries all of them.
constexpr bool IsFuzzing()
{
#ifdef VELOXD_FUZZ
    return true;
#else
    return false;
#endif
}

// Returns whether a count or a size begins with four or more digits. Its key ends with "Count", "Lines" or "Points" in
// any case.
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
