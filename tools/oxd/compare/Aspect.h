// What two files are compared in: the words of the command line and of the JSON document, one row of the table each.
#pragma once

#include <array>
#include <set>
#include <string_view>

namespace oxd {

enum class Aspect
{
    Structure,   // version, groups, channels, empty slots, sizes
    Bits,        // the width in which the file stores samples
    Axes,        // names, units, min and range, also of single lines
    Samples,     // how many are valid, and their values
    Information, // the tree of measurement information
    Other,       // what a save drops or writes anew
};

struct AspectName
{
    Aspect aspect;
    std::string_view name;
};

inline constexpr std::array aspectNames{
    AspectName{Aspect::Structure, "structure"},
    AspectName{Aspect::Bits, "bits"},
    AspectName{Aspect::Axes, "axes"},
    AspectName{Aspect::Samples, "samples"},
    AspectName{Aspect::Information, "information"},
    AspectName{Aspect::Other, "other"},
};

// Aspects are numbered from 0 in the order of the table.
constexpr std::string_view NameOf(Aspect aspect)
{
    return aspectNames[static_cast<std::size_t>(aspect)].name;
}

using Aspects = std::set<Aspect>;

} // namespace oxd
