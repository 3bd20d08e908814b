// Names compared without regard to ASCII case. No locale takes part: a Turkish one would part "i" from "I".
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace veltaris::velstdlib::string {

constexpr char Folded(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool EqualFolded(std::string_view a, std::string_view b);

std::string FoldedCopy(std::string_view text);

// Hash of the folded text, keyed with a number drawn once per process, so that no file can be made to collide.
std::size_t HashFolded(std::string_view text);

constexpr bool IsSpace(char c)
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}

constexpr std::string_view WithoutLeadingSpace(std::string_view text)
{
    while (!text.empty() && IsSpace(text.front()))
        text.remove_prefix(1);
    return text;
}

constexpr std::string_view WithoutTrailingSpace(std::string_view text)
{
    while (!text.empty() && IsSpace(text.back()))
        text.remove_suffix(1);
    return text;
}

} // namespace veltaris::velstdlib::string
