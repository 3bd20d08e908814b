// How many cells or pixels something has.
#pragma once

#include <cstddef>

namespace oxd {

struct Extent
{
    std::size_t columns;
    std::size_t rows;
};

} // namespace oxd
