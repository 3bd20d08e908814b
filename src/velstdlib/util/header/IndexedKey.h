// Keys that are numbered: a prefix, a decimal index without leading zeros, and perhaps a property. "Gr12-Name" is the
// property "-Name" of index 12 behind the prefix "Gr".
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace veltaris::velstdlib::util {

// What follows the prefix of a key.
struct CIndexedKey
{
    std::uint64_t index;
    std::string_view rest; // a view of the key
};

// The parts of a key that begins with this prefix, whatever the case of its letters, and goes on with an index of at
// most 64 bits; nothing for other keys. Readers walk the keys that there are, since the counts beside them may be
// anything. May be called by several threads at once.
std::optional<CIndexedKey> SplitIndexedKey(std::string_view key, std::string_view prefix);

} // namespace veltaris::velstdlib::util
