// Making texts of headers: many lines that differ by a number, and line ends as files have them.
#pragma once

#include <string>
#include <string_view>

// Repeats the line `count` times, with each # replaced by the number of the repetition, from 0.
inline std::string Lines(int count, std::string_view line)
{
    std::string lines;
    for (int i = 0; i < count; ++i) {
        for (const char c : line)
            lines.append(c == '#' ? std::to_string(i) : std::string(1, c));
    }
    return lines;
}

// Replaces each LF by CR LF.
inline std::string WithCrLf(std::string_view text)
{
    std::string result;
    for (const char c : text)
        result.append(c == '\n' ? "\r\n" : std::string(1, c));
    return result;
}
