// What an open file holds, as far as the interface shows it.
#pragma once

#include <cstdint>
#include <string>

// Reads everything, through buffers of exactly the sizes that the interface names, so that sanitizers see any byte too
// many; of long lists the beginning. A data set gives the same text before and after it is
// saved and opened: texts are told as far as they outlast this, numbers with the digits that a file keeps, and of nodes
// no handles. A failure is part of the text, but no memory is std::bad_alloc. No failure must be pending.
std::string Describe(std::uint64_t handle);
