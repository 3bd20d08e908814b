// Headers as lines: many that differ by a number, and as files have them.
#pragma once

#include <string>
#include <string_view>

// The line once for every number from 0, which stands where it has a #.
inline std::string Lines(int count, std::string_view line)
{
    std::string lines;
    for (int i = 0; i < count; ++i) {
        for (const char c : line)
            lines.append(c == '#' ? std::to_string(i) : std::string(1, c));
    }
    return lines;
}

// With the line ends that files have.
inline std::string WithCrLf(std::string_view text)
{
    std::string result;
    for (const char c : text)
        result.append(c == '\n' ? "\r\n" : std::string(1, c));
    return result;
}
