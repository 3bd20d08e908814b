// Names compared without regard to ASCII case, which is how a header compares the names of sections and keys. Folding
// makes capital letters small and leaves all other bytes as they are, also those of characters beyond ASCII. No locale
// takes part: a Turkish one would tell "i" from "I". All functions may be called by several threads at once.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace veltaris::velstdlib::string {

constexpr char Folded(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

// Whether both texts are equal once they are folded.
bool EqualFolded(std::string_view a, std::string_view b);

std::string FoldedCopy(std::string_view text);

// A hash of the folded text: texts that EqualFolded calls equal have equal hashes. Its key is drawn once per process,
// so that nobody can make a file whose names collide; hashes must therefore not be stored.
std::size_t HashFolded(std::string_view text);

// The white space of the C locale: blank, tab, line feed, vertical tab, form feed and carriage return.
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
