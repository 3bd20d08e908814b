// The line operators of the library by name.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace oxd {

struct LineOperator
{
    std::string_view name;
    std::int32_t code = 0; // as the library's line functions take it
    std::string_view description;
    std::string_view caption; // of what comes out
};

inline constexpr LineOperator rawData{"", 0, "", ""};

inline constexpr std::array lineOperators{
    LineOperator{"mean", 1, "subtract the line's mean", "mean fit"},
    LineOperator{"line", 2, "subtract a fitted straight line", "line fit"},
    LineOperator{"derive", 3, "differences of neighbouring samples", "derived"},
    LineOperator{"parabola", 4, "subtract a fitted parabola", "parabola fit"},
    LineOperator{"polynomial", 5, "subtract a fitted polynomial of degree 4", "polynomial fit"},
};

} // namespace oxd
