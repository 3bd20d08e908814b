// Products of counts that a file or a caller gave, and that may be anything.
#pragma once

#include <cstdint>
#include <limits>

namespace veltaris::velstdlib::math {

// The product or, where it takes more than 64 bits, the largest 64-bit number, which is beyond every limit that it may
// be compared with.
constexpr std::uint64_t Product(std::uint64_t a, std::uint64_t b)
{
    std::uint64_t product = 0;
    return __builtin_mul_overflow(a, b, &product) ? std::numeric_limits<std::uint64_t>::max() : product;
}

} // namespace veltaris::velstdlib::math
