// The channels that a processor reads from or writes to.
#pragma once

#include "velflexlib/dataset/channels/Databuffer.h"
#include "velstdlib/util/header/HeaderSection.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>

namespace veltaris::velflexlib::dataset {

// "No such thing" among group indices, channel indices and instance numbers.
inline constexpr std::uint64_t noIndex = ~std::uint64_t{0};

struct CChannelAddress
{
    std::uint64_t group = noIndex;
    std::uint64_t channel = noIndex;

    bool operator==(const CChannelAddress&) const = default;
};

// Answers null for a channel that does not exist.
using ChannelLookup = std::function<std::shared_ptr<CDataBuffer>(std::uint64_t group, std::uint64_t channel)>;

// A list, most of which may be missing in a file: it costs memory only for the channels that have an index.
class CChannelLinks
{
public:
    // Replaces the list by the one under `prefix` + "Count" and, for each link, `prefix` + number + "Group" and
    // "Channel". Throws CVELFileBadContentException when it is too long.
    void Read(const velstdlib::util::CHeaderSection& section, const std::string& prefix);

    // Replaces what the links led to. Channels that do not exist are left out.
    void Connect(const ChannelLookup& lookup);

    std::uint64_t GetCount() const { return m_count; }
    // No channel, for a link beyond the list, too.
    CChannelAddress GetAddress(std::uint64_t link) const;
    // Null when the link is not connected, or its channel is gone.
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
