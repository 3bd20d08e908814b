// The registry of open files.
#pragma once

#include "api/LastChannel.h"
#include "velflexlib/dataset/DataSet.h"
#include "velstdlib/util/header/VELConfig.h"

#include <cstdint>
#include <string>

// All that belongs to one handle.
struct FileHandleStruct
{
    std::string fileName; // as the caller gave it
    veltaris::velstdlib::util::CVELOXDConfig config;
    veltaris::velflexlib::dataset::CDataSet dataSet;
    CLastChannelGuard lastChannelGuard{dataSet};
};

// A new record. One that exists is returned as it is, and the mishap stored as the last error.
FileHandleStruct& RegisterFileHandle(std::uint64_t handle);

// Throws std::runtime_error "Handle does not exist".
FileHandleStruct& GetFileHandleStruct(std::uint64_t handle);

// The living node of any open file's information that has this handle, or null.
veltaris::velflexlib::dataset::CInfoSetItem* FindInfoItemOfAnyFile(std::uint64_t item);
