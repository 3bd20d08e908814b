// The line operators of the library, and all that the tool says of them: one row of the table for each. The command
// line, its help and the titles of pictures are made from this table; the manual, docs/oxd.md, describes them once
// more.
#pragma once

#include "oxd/system/Unit.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>

namespace oxd {

struct LineOperator
{
    std::string_view name;        // on the command line
    std::int32_t code = 0;        // as the line functions of the interface take it
    std::string_view description; // in the help: what it does to each line
    std::string_view caption;     // in the title of a picture of its outcome; empty for none
    std::string_view unitEnd;     // what the unit of its outcome has behind that of the samples
};

// The samples as they are. It has no name, because it is what a command does when no operator is chosen.
inline constexpr LineOperator rawData{"", 0, "", "", ""};

// In the order in which the help lists them.
inline constexpr std::array lineOperators{
    LineOperator{"mean", 1, "subtract the line's mean", "mean fit", ""},
    LineOperator{"line", 2, "subtract a fitted straight line", "line fit", ""},
    LineOperator{"derive", 3, "differences of neighbouring samples", "derived", perPoint},
    LineOperator{"parabola", 4, "subtract a fitted parabola", "parabola fit", ""},
    LineOperator{"polynomial", 5, "subtract a fitted polynomial of degree 4", "polynomial fit", ""},
};

// Null if there is none of that name.
inline const LineOperator* FindLineOperator(std::string_view name)
{
    const auto* const found = std::find_if(lineOperators.begin(), lineOperators.end(),
                                           [&](const LineOperator& known) { return known.name == name; });
    return found == lineOperators.end() ? nullptr : found;
}

} // namespace oxd
