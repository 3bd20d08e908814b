// The registry of open files.
#pragma once

#include "api/FileHandleStruct.h"

#include <cstdint>

// The registry is one map for the process, from handles to the records that it owns. Handles count from 1; a new file
// gets the smallest free one. A reference to a record holds until CloseOxdFile is called for its handle.
// Not thread-safe: the interface is called from one thread at a time.

// The record of a handle, made empty when there was none. For a handle that has a record already, this is returned as
// it is, and a warning is stored as the last error.
FileHandleStruct& RegisterFileHandle(std::uint64_t handle);

// The record of a handle. Throws std::runtime_error "Handle does not exist" when there is none.
FileHandleStruct& GetFileHandleStruct(std::uint64_t handle);

// The living node with this handle, in the information of whichever open file has it, or null.
veltaris::velflexlib::dataset::CInfoSetItem* FindInfoItemOfAnyFile(std::uint64_t item);
