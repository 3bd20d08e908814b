// Rows of samples, to and from the lines of a channel. Not thread-safe, as the library is not.
#pragma once

#include "blocks/Lines.h"

#include <cstdint>

namespace veltaris::blocks {

// Rows in the caller's memory, each as long as a line. A negative pitch makes them go backwards.
template <class Sample>
struct CRows
{
    Sample* begin;
    std::int64_t pitch;

    Sample* operator[](std::uint64_t row) const { return begin + static_cast<std::int64_t>(row) * pitch; }
};

// Samples are std::int32_t, which are raw, or double, which are real values. Both return a VELBlockResult.
template <class Sample>
std::int32_t ReadLines(const CChannel& channel, std::int32_t operation, const CLines& lines, const CRows<Sample>& rows);

template <class Sample>
std::int32_t WriteLines(const CChannel& channel, const CLines& lines, const CRows<const Sample>& rows);

} // namespace veltaris::blocks
