// The registry of open files.
#pragma once

#include "api/FileHandleStruct.h"

#include <cstdint>

// The registry is one table for the process, from handles to the records that it owns. A reference to a record holds
// until CloseOxdFile is called for its handle. May be called by several threads at once; each file is for one thread at
// a time.

// The record of a handle. Throws std::runtime_error "Handle does not exist" when there is none.
FileHandleStruct& GetFileHandleStruct(std::uint64_t handle);
