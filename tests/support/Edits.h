// A series of calls that makes a data set of some of everything, so that every function that changes something is
// called.
#pragma once

#include <cstdint>
#include <vector>

// One change of an open file, which may be tried again when it fails.
using Edit = void (*)(std::uint64_t handle);

const std::vector<Edit>& Edits();
