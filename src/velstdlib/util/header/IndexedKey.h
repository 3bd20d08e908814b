// Keys that are numbered: a prefix, a decimal index without leading zeros, and perhaps a property.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace veltaris::velstdlib::util {

struct CIndexedKey
{
    std::uint64_t index;
    std::string_view rest;
};

// The parts of a key that begins with this prefix, whatever the case of its letters; nothing for other keys. Readers
// walk the keys that there are, as the counts beside them may be anything.
std::optional<CIndexedKey> SplitIndexedKey(std::string_view key, std::string_view prefix);

} // namespace veltaris::velstdlib::util
