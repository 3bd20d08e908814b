// Where the channels that processors derive come to stand in a data set.
#pragma once

#include "velflexlib/dataset/DataSet.h"
#include "velflexlib/dataset/processors/ChannelLinks.h"

#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>

namespace veltaris::processing {

inline constexpr const char* derivedGroup = "Processed";

// A place in a data set.
struct CPlace
{
    std::uint64_t group = 0; // its id
    std::uint64_t slot = 0;

    bool operator==(const CPlace&) const = default;
};

// Gives an output the channel at its address: one of a group named Processed is overwritten, and one is made if the
// slot is empty or the next of its group; slots between that other outputs have as addresses stay empty for them. Any
// other output, and one without an address, gets a new channel in the first group named Processed, which is made behind
// all others if it is missing, at a slot that is no output's address.
//
// Invariants: no place is given twice, and no channel outside of the groups named Processed is overwritten. The data
// set must outlive this. Not thread-safe.
class CPlacement
{
public:
    using Addresses = std::set<velflexlib::dataset::CChannelAddress>;

    // `reserved` are the addresses of all outputs of the run.
    CPlacement(velflexlib::dataset::CDataSet& dataSet, Addresses reserved)
        : m_dataSet(dataSet), m_reserved(std::move(reserved))
    {
    }

    // The channel is there and has no content yet that means anything. Throws std::bad_alloc.
    CPlace Place(const velflexlib::dataset::CChannelAddress& address);

    // Slots that are still empty for outputs that have not come.
    const Addresses& Gaps() const { return m_gaps; }

    // Where a link with this address leads: to an output that was placed elsewhere first. There need not be a channel.
    CPlace Find(const velflexlib::dataset::CChannelAddress& address) const;
    // Null if there is none.
    std::shared_ptr<velflexlib::dataset::CDataBuffer> ChannelAt(const CPlace& place) const;

private:
    bool IsPossible(const velflexlib::dataset::CChannelAddress& address) const;
    std::uint64_t EnsureDerivedGroup();
    CPlace PlaceBehindOthers();
    void MakeChannel(const CPlace& place);

    velflexlib::dataset::CDataSet& m_dataSet;
    Addresses m_reserved;
    Addresses m_given;
    Addresses m_gaps; // slots that were made only because one behind them was
    std::map<velflexlib::dataset::CChannelAddress, CPlace> m_elsewhere;
};

} // namespace veltaris::processing
