// How much memory an operation takes.
#pragma once

#include <cstdint>
#include <functional>

namespace bench {

// How many bytes a process grows by `take`, which must keep what it makes and tell whether it succeeded. This is
// measured in a child process, since a process may keep memory that was freed earlier. Throws std::runtime_error if
// nothing was measured.
std::uint64_t MemoryTakenBy(const std::function<bool()>& take);

} // namespace bench
