// Fault injection between the library and the C library: functions of the C library are replaced by ones that count the
// calls, and that make the calls fail that a plan names. Not thread-safe: the plan and the counts are global.
#pragma once

#include <cstdint>

namespace faults {

enum class Kind
{
    Memory, // allocations
    File,   // querying, opening, reading, writing, seeking, closing, flushing, renaming and removing files
};

enum class Effect
{
    Fail,       // once: no memory, a broken or a full disk
    FailOn,     // this call and all later ones
    Shorten,    // only half of the bytes are read or written
    Interrupt,  // EINTR, once
    Kill,       // the process is killed before the call
    KillWithin, // the process is killed after half of the bytes are written
    CtrlC       // the process is interrupted before the call
};

// Which call fails, and how. By default none does.
struct Plan
{
    Kind kind = Kind::Memory;
    std::uint64_t at = ~std::uint64_t{0}; // counted from 0
    Effect effect = Effect::Fail;
};

// What happened since Arm().
struct Count
{
    std::uint64_t calls = 0; // of the plan's kind
    bool struck = false;     // the planned fault was injected
    bool struckRead = false; // and the first one was in a read
};

// Start and stop the injection of faults.
void Arm(const Plan& plan);
Count Disarm();

// Returns the number of blocks of memory in use plus that of mapped pages, armed or not.
std::int64_t LiveBlocks();

} // namespace faults
