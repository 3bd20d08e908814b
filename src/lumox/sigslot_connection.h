// A connection of a slot to a signal: what its owner can ask of it and do to it. May be used by several threads at
// once.
#pragma once

#include <cstdint>
#include <functional>

namespace lumox {

enum class Operation : std::uint8_t
{
    IsConnected = 0, // true while the slot is connected: active, blocked or pending
    Disconnect = 1,
    Block = 2,
    Unblock = 3,
    IsBlocked = 4,
    IsPending = 5, // connected, but not called before the next emission begins
};

// Applies an operation to one slot of one signal. Disconnect, Block and Unblock answer whether they found the slot.
// It may outlive its signal: every operation then answers false. Any other operation throws std::runtime_error.
using sigslot_connection = std::function<bool(Operation)>;

} // namespace lumox
