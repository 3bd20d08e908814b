// Where two files begin to differ.
#pragma once

#include "oxd/inspection/InspectFile.h"

#include <cstdint>
#include <optional>
#include <string>

namespace oxd {

// The number of the first byte in which they differ, which is the length of the shorter one if it is all of the other's
// begin. Nothing if they are the same. Throws a Failure if one cannot be read.
std::optional<std::uint64_t> FirstDifference(const std::string& a, const std::string& b);

// What stands at a byte of a file, for example: line 12 of the header.
std::string PlaceOf(std::uint64_t byte, const inspect::Inspection& inspection);

} // namespace oxd
