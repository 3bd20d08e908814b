#include "velflexlib/dataset/processors/ChannelLinks.h"

#include "velstdlib/string/FoldedText.h"
#include "velstdlib/util/Limits.h"
#include "velstdlib/util/header/IndexedKey.h"
#include "velstdlib/util/header/ListCount.h"

namespace veltaris::velflexlib::dataset {

using velstdlib::string::EqualFolded;
using velstdlib::util::CHeaderSection;

void CChannelLinks::Read(const CHeaderSection& section, const std::string& prefix)
{
    m_links.clear();
    m_count = velstdlib::util::ReadListCount<std::uint64_t>(section, prefix + "Count",
                                                            velstdlib::util::limits::processorChannels);
    section.keys.ForEach([&](std::string_view key, std::string_view) {
        const auto indexed = velstdlib::util::SplitIndexedKey(key, prefix);
        if (!indexed || indexed->index >= m_count)
            return;
        if (EqualFolded(indexed->rest, "Group"))
            m_links[indexed->index].address.group = section.keys.GetValueT<std::uint64_t>(key, noIndex);
        else if (EqualFolded(indexed->rest, "Channel"))
            m_links[indexed->index].address.channel = section.keys.GetValueT<std::uint64_t>(key, noIndex);
    });
}

void CChannelLinks::Connect(const ChannelLookup& lookup)
{
    for (auto& [index, link] : m_links) {
        if (link.address.IsComplete())
            link.buffer = lookup(link.address.group, link.address.channel);
    }
}

CChannelAddress CChannelLinks::GetAddress(std::uint64_t link) const
{
    const auto found = m_links.find(link);
    return found == m_links.end() ? CChannelAddress() : found->second.address;
}

std::shared_ptr<CDataBuffer> CChannelLinks::GetBuffer(std::uint64_t link) const
{
    const auto found = m_links.find(link);
    return found == m_links.end() ? nullptr : found->second.buffer.lock();
}

} // namespace veltaris::velflexlib::dataset
