// Which lines of which channel a call is about, and a loop over them. Nothing here keeps state.
#pragma once

#include "blocks/Verdict.h"

#include <cstdint>

namespace veltaris::blocks {

struct CChannel
{
    std::uint64_t file;
    std::uint64_t group;
    std::uint64_t channel;
};

// `count` lines: those that `numbers` names, or without it those from `first` on.
struct CLines
{
    std::uint64_t first;
    const std::uint64_t* numbers;
    std::uint64_t count;

    std::uint64_t operator[](std::uint64_t row) const { return numbers == nullptr ? first + row : numbers[row]; }
};

// Calls use(line, row) for one line after the other as long as no call of the library fails.
template <class Use>
std::int32_t ForEachLine(const CLines& lines, Use use)
{
    BeginCalls();
    for (std::uint64_t row = 0; row < lines.count && !VELHasLastError(); ++row)
        use(lines[row], row);
    return EndCalls();
}

} // namespace veltaris::blocks
