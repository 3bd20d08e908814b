#include "processing/Placement.h"

namespace veltaris::processing {

namespace dataset = velflexlib::dataset;
using dataset::CChannelAddress;

namespace {

constexpr std::int64_t groupBits = 32;

std::shared_ptr<dataset::CDataBuffer> ChannelAt(const dataset::CDataSet& dataSet, std::uint64_t group,
                                                std::uint64_t slot)
{
    const auto found = dataSet.GetGroup(group);
    return found ? found->GetChannelBuffer(slot) : nullptr;
}

} // namespace

bool CPlacement::IsPossible(const CChannelAddress& address) const
{
    const auto group = m_dataSet.GetGroup(address.group);
    return group && address.channel <= group->GetChannelCount();
}

CPlace CPlacement::PlaceBehindOthers()
{
    int group = m_dataSet.GetGroupId(derivedGroup);
    if (group < 0)
        group = m_dataSet.CreateGroup(derivedGroup, groupBits);
    const auto id = static_cast<std::uint64_t>(group);
    return {id, m_dataSet.GetGroup(id)->GetChannelCount()};
}

CPlace CPlacement::Place(const CChannelAddress& address)
{
    const bool isPossible = IsPossible(address);
    const CPlace place = isPossible ? CPlace{address.group, address.channel} : PlaceBehindOthers();
    const bool hasAddress = address.group != dataset::noIndex && address.channel != dataset::noIndex;
    if (!isPossible && hasAddress)
        m_elsewhere[address] = place;
    if (!ChannelAt(m_dataSet, place.group, place.slot))
        m_dataSet.GetGroup(place.group)->GetOrCreateChannelBuffer(place.slot, 0, 0);
    return place;
}

std::shared_ptr<dataset::CDataBuffer> CPlacement::Find(const CChannelAddress& address) const
{
    const auto elsewhere = m_elsewhere.find(address);
    return elsewhere == m_elsewhere.end() ? ChannelAt(m_dataSet, address.group, address.channel)
                                          : ChannelAt(m_dataSet, elsewhere->second.group, elsewhere->second.slot);
}

} // namespace veltaris::processing
