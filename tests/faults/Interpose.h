// Stands between the library and the C library: counts the calls that come through, and makes one of them fail.
#pragma once

#include <cstdint>

namespace faults {

enum class Kind
{
    Memory, // allocations
    File,   // asking for, opening, reading, writing, seeking, closing and removing
};

enum class Effect
{
    Fail,      // once: no memory, a broken or a full disk
    FailOn,    // from then on
    Shorten,   // half of what was asked for is read or written
    Interrupt, // EINTR, once
    Kill,      // the process, ahead of the call
    KillWithin // the process, when half is written
};

// Calls are counted from 0.
struct Plan
{
    Kind kind = Kind::Memory;
    std::uint64_t at = ~std::uint64_t{0};
    Effect effect = Effect::Fail;
};

struct Count
{
    std::uint64_t calls = 0;
    bool struck = false;     // the plan's call came
    bool struckRead = false; // and was one that reads
};

void Arm(const Plan& plan);
Count Disarm();

// Blocks of memory in use, and pages of the system.
std::int64_t LiveBlocks();

} // namespace faults
