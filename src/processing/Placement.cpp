#include "processing/Placement.h"

namespace veltaris::processing {

namespace dataset = velflexlib::dataset;
using dataset::CChannelAddress;

namespace {

constexpr std::int64_t groupBits = 32;

} // namespace

bool CPlacement::IsPossible(const CChannelAddress& address) const
{
    const auto group = m_dataSet.GetGroup(address.group);
    if (!group || !address.IsComplete() || m_given.contains(address))
        return false;
    if (group->GetChannelBuffer(address.channel))
        return group->GetName() == derivedGroup;
    std::uint64_t end = group->GetChannelCount();
    while (end < address.channel && m_reserved.contains({address.group, end}))
        ++end;
    return end >= address.channel;
}

std::uint64_t CPlacement::EnsureDerivedGroup()
{
    int group = m_dataSet.GetGroupId(derivedGroup);
    if (group < 0)
        group = m_dataSet.CreateGroup(derivedGroup, groupBits);
    return static_cast<std::uint64_t>(group);
}

CPlace CPlacement::PlaceBehindOthers()
{
    const std::uint64_t group = EnsureDerivedGroup();
    std::uint64_t slot = m_dataSet.GetGroup(group)->GetChannelCount();
    while (m_reserved.contains({group, slot}))
        ++slot;
    return {group, slot};
}

CPlace CPlacement::Place(const CChannelAddress& address)
{
    if (!m_dataSet.GetGroup(address.group))
        EnsureDerivedGroup(); // which may be the group that is meant
    const bool isPossible = IsPossible(address);
    const CPlace place = isPossible ? CPlace{address.group, address.channel} : PlaceBehindOthers();
    if (!isPossible && address.IsComplete())
        m_elsewhere[address] = place;
    MakeChannel(place);
    m_given.insert({place.group, place.slot});
    return place;
}

void CPlacement::MakeChannel(const CPlace& place)
{
    const auto group = m_dataSet.GetGroup(place.group);
    for (std::uint64_t slot = group->GetChannelCount(); slot < place.slot; ++slot)
        m_gaps.insert({place.group, slot});
    m_gaps.erase({place.group, place.slot});
    if (!group->GetChannelBuffer(place.slot))
        group->GetOrCreateChannelBuffer(place.slot, 0, 0);
}

CPlace CPlacement::Find(const CChannelAddress& address) const
{
    const auto elsewhere = m_elsewhere.find(address);
    return elsewhere == m_elsewhere.end() ? CPlace{address.group, address.channel} : elsewhere->second;
}

std::shared_ptr<dataset::CDataBuffer> CPlacement::ChannelAt(const CPlace& place) const
{
    const auto group = m_dataSet.GetGroup(place.group);
    return group ? group->GetChannelBuffer(place.slot) : nullptr;
}

} // namespace veltaris::processing
