// The record that stands behind a file handle.
#pragma once

#include "api/LastChannel.h"
#include "velflexlib/dataset/DataSet.h"
#include "velstdlib/util/header/VELConfig.h"

#include <string>

// Everything that the library holds for one open file. The registry owns the record from the opening or creation of the
// file until it is closed; no file on disk stays open in between.
// Not thread-safe: callers use each file from one thread at a time.
struct FileHandleStruct
{
    std::string fileName;                            // as the caller gave it
    veltaris::velstdlib::util::CVELOXDConfig config; // the header as last opened or saved, not as edited since
    veltaris::velflexlib::dataset::CDataSet dataSet{veltaris::velstdlib::util::Sharing::OneThread};
    CLastChannel lastChannel{dataSet};
};
