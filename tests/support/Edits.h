// A series of changes that calls every function that changes something, and so makes a data set with some of
// everything.
#pragma once

#include <cstdint>
#include <vector>

// One change of an open file. It may be repeated after it has failed.
using Edit = void (*)(std::uint64_t handle);

const std::vector<Edit>& Edits();

// Makes all changes. The data set must be new.
void ApplyEdits(std::uint64_t handle);
