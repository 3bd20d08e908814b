// The difference of two texts as diff -u prints it.
#pragma once

#include <string>
#include <string_view>

namespace oxd {

struct NamedText
{
    std::string name;
    std::string_view text;
};

// Nothing if all lines are the same. Line ends do not count: files of other programs may have others.
std::string UnifiedDifference(const NamedText& before, const NamedText& after);

} // namespace oxd
