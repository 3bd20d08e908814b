#include "oxd/compare/FileContent.h"

#include <algorithm>

namespace oxd {

FileContent::FileContent(const std::string& file) : FileContent(InspectFile(file))
{
}

FileContent::FileContent(const inspect::Inspection& inspection)
    : m_dataSet(DataSet::Open(inspection.file)), m_other(inspection)
{
    for (const inspect::ChannelSamples& channel : inspection.channels) {
        m_bits[{channel.group, channel.slot}] = channel.bits;
    }
    std::vector<std::uint64_t> ids(m_dataSet.Call(GetGroupCount));
    ids.reserve(1); // the function wants a place even for none
    m_dataSet.Call(GetAllGroupIds, ids.data());
    for (const std::uint64_t id : ids) {
        m_groups.push_back({id, m_dataSet.Text(GetGroupName, id), m_dataSet.Call(GetLogicalGroupId, id),
                            m_dataSet.Call(GetChannelCount, id)});
    }
}

std::uint64_t FileContent::Version() const
{
    return static_cast<std::uint64_t>(m_dataSet.Call(GetOxdVersion)); // 1 or 2 in a file that opens
}

std::vector<std::string> FileContent::GroupNames() const
{
    std::vector<std::string> names;
    std::transform(m_groups.begin(), m_groups.end(), std::back_inserter(names),
                   [](const Group& group) { return group.name; });
    return names;
}

std::optional<Channel> FileContent::FindChannel(const Group& group, std::uint64_t slot) const
{
    const Channel channel(m_dataSet, group.id, slot);
    return slot < group.slots && channel.Exists() ? std::optional(channel) : std::nullopt;
}

std::int64_t FileContent::Bits(const Group& group, std::uint64_t slot) const
{
    return m_bits.at({group.id, slot});
}

} // namespace oxd
