// The list of channels that a processor reads from or writes to, as addresses in a file and as the channels that were
// found at these addresses.
#pragma once

#include "velflexlib/dataset/channels/Databuffer.h"
#include "velstdlib/util/header/HeaderSection.h"

#include <compare>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>

namespace veltaris::velflexlib::dataset {

// Stands for a missing group index, channel index or instance number.
inline constexpr std::uint64_t noIndex = ~std::uint64_t{0};

// The position of a channel in a file: either index may be missing.
struct CChannelAddress
{
    std::uint64_t group = noIndex;
    std::uint64_t channel = noIndex;

    bool IsComplete() const { return group != noIndex && channel != noIndex; }

    // NOLINTNEXTLINE(modernize-use-nullptr): the analysis takes the zero that the compiler compares with for a pointer
    auto operator<=>(const CChannelAddress&) const = default;
};

// Returns null for a channel that does not exist.
using ChannelLookup = std::function<std::shared_ptr<CDataBuffer>(std::uint64_t group, std::uint64_t channel)>;

// A file can claim a long list and give hardly any addresses in it, so memory is only used for the links that have at
// least one index.
//
// Invariant: no link beyond GetCount() is stored. Links do not keep channels alive. Not thread-safe: belongs to its
// processor.
class CChannelLinks
{
public:
    // Replaces the list. Its length is under the key `prefix` + "Count", the indices of each link are under `prefix` +
    // number + "Group" and + "Channel". Throws CVELFileBadContentException if it is too long.
    void Read(const velstdlib::util::CHeaderSection& section, const std::string& prefix);

    // Connects every link that has both indices to the channel at its address, and disconnects it from any other. Links
    // to channels that do not exist are left unconnected.
    void Connect(const ChannelLookup& lookup);

    std::uint64_t GetCount() const { return m_count; }
    // Both indices are missing for a link that the file gives no address, and for a link beyond the list.
    CChannelAddress GetAddress(std::uint64_t link) const;
    // Calls visit(link, address) for each link that has at least one index, in ascending order.
    template <class Visit>
    void ForEachAddress(Visit visit) const
    {
        for (const auto& [index, link] : m_links) {
            if (link.address != CChannelAddress())
                visit(index, link.address);
        }
    }
    // Null if the link is not connected or its channel no longer exists.
    std::shared_ptr<CDataBuffer> GetBuffer(std::uint64_t link) const;

private:
    struct Link
    {
        CChannelAddress address;
        std::weak_ptr<CDataBuffer> buffer;
    };

    std::uint64_t m_count = 0;
    std::map<std::uint64_t, Link> m_links;
};

} // namespace veltaris::velflexlib::dataset
