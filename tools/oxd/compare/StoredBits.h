// The bits in which a file stores the samples of its channels, of which the interface of the library shows nothing.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <utility>

namespace oxd {

// By the positions of group and slot.
using StoredBits = std::map<std::pair<std::uint64_t, std::uint64_t>, std::int64_t>;

// Reads the header alone. The file must be one that opens.
StoredBits ReadStoredBits(const std::string& file);

} // namespace oxd
