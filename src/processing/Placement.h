// Where the channels that processors derive come to stand in a data set.
#pragma once

#include "velflexlib/dataset/DataSet.h"
#include "velflexlib/dataset/processors/ChannelLinks.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>

namespace veltaris::processing {

inline constexpr const char* derivedGroup = "Processed";

// A place in a data set.
struct CPlace
{
    std::uint64_t group = 0; // its id
    std::uint64_t slot = 0;
};

// Gives an output the channel at its address, which is overwritten, or makes one there if the slot is empty or the next
// of its group. Any other output, and one without an address, gets a new channel in the first group named Processed,
// which is made behind all others if it is missing. The data set must outlive this. Not thread-safe.
class CPlacement
{
public:
    explicit CPlacement(velflexlib::dataset::CDataSet& dataSet) : m_dataSet(dataSet) {}

    // The channel is there and has no content yet that means anything. Throws std::bad_alloc.
    CPlace Place(const velflexlib::dataset::CChannelAddress& address);

    // What a link with this address leads to: an output that was placed elsewhere comes first. Null if there is no such
    // channel.
    std::shared_ptr<velflexlib::dataset::CDataBuffer> Find(const velflexlib::dataset::CChannelAddress& address) const;

private:
    bool IsPossible(const velflexlib::dataset::CChannelAddress& address) const;
    CPlace PlaceBehindOthers();

    velflexlib::dataset::CDataSet& m_dataSet;
    std::map<velflexlib::dataset::CChannelAddress, CPlace> m_elsewhere;
};

} // namespace veltaris::processing
