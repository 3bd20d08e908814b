// Looks a file over without reading its samples: what its header says, what is wrong with it, and where the samples of
// each channel stand.
#pragma once

#include "inspect/ChannelSamples.h"
#include "inspect/Finding.h"
#include "velflexlib/dataset/DataSet.h"

#include <cstdint>
#include <iosfwd>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace veltaris::inspect {

// A plain value.
struct Inspection
{
    std::string file;
    std::uint64_t fileBytes = 0;
    std::uint64_t headerBytes = 0;  // with the end mark; 0 when there is none
    std::string header;             // those bytes; empty when there are more than a header may have
    std::uint64_t claimedBytes = 0; // of samples, that all channels claim together
    std::optional<int> version;     // of the data-set section; nothing when there is no header
    // Groups, channels without samples, and information; of a header that does not open, what was built before it
    // failed. Never null.
    std::shared_ptr<velflexlib::dataset::CDataSet> dataSet;
    std::vector<Finding> findings;        // in file order
    std::vector<ChannelSamples> channels; // in the order of their samples in the file

    // Whether the library opens the file. A file without a header opens, too: as an empty data set.
    bool Opens() const;
};

// The header is read as the library reads it, so that both agree on what opens. Time and memory go by the header, and
// samples are not read. Of each rule at most 1000 findings are listed; the last one then says how many more there are.
// The library's log gets the warnings that opening the file gives.
//
// Throw std::system_error when the file cannot be opened or read, never for what it holds, and std::bad_alloc. May be
// called by several threads at once.

Inspection Inspect(const std::string& fileName); // UTF-8
// The same for an open stream, which is read from its beginning.
Inspection InspectStream(std::istream& stream, std::string fileName);

} // namespace veltaris::inspect
