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
};

inline constexpr std::array lineOperators{
    LineOperator{"mean", 1, "subtract the line's mean"},
    LineOperator{"line", 2, "subtract a fitted straight line"},
    LineOperator{"derive", 3, "differences of neighbouring samples"},
    LineOperator{"parabola", 4, "subtract a fitted parabola"},
    LineOperator{"polynomial", 5, "subtract a fitted polynomial of degree 4"},
};

} // namespace oxd
