// The content of an open file as one text, so that two data sets can be compared.
#pragma once

#include <cstdint>
#include <string>

// Reads everything that the interface shows, and the beginning of long lists. Texts are read to buffers of exactly the
// sizes that the interface asks for, so that sanitizers see any byte too many. A data set has the same description
// before and after it is saved and opened: texts are given as far as a file keeps them, numbers with the digits that it
// keeps, and handles of nodes not at all. Failures are part of the description, except that a lack of memory throws
// std::bad_alloc. No failure may be pending.
std::string Describe(std::uint64_t handle);
