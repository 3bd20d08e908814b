#include "api/Lookup.h"

#include "api/FileManager.h"

namespace {

[[noreturn]] void FailNoChannel(const CCall& call, std::uint64_t channel)
{
    call.Fail("No channel with given name available. Index: ", std::to_string(channel));
}

} // namespace

CDataSet& DataSetOf(std::uint64_t handle)
{
    return GetFileHandleStruct(handle).dataSet;
}

CInfoSet& InfoSetOf(std::uint64_t handle)
{
    return DataSetOf(handle).GetInfoSet();
}

CDataGroup& GroupOf(const CCall& call, std::uint64_t handle, std::uint64_t group)
{
    CDataGroup* const found = DataSetOf(handle).FindGroup(group);
    if (!found)
        call.Fail("No group with given index available. Index: ", std::to_string(group));
    return *found;
}

CDataGroup& GroupWithSlot(const CCall& call, std::uint64_t handle, std::uint64_t group, std::uint64_t channel)
{
    CDataGroup& found = GroupOf(call, handle, group);
    if (channel >= found.GetChannelCount())
        FailNoChannel(call, channel);
    return found;
}

CDataBuffer& ChannelOf(const CCall& call, std::uint64_t handle, std::uint64_t group, std::uint64_t channel)
{
    CLastChannel& last = GetFileHandleStruct(handle).lastChannel;
    if (CDataBuffer* const found = last.Find(group, channel))
        return *found;
    CDataBuffer* const found = GroupOf(call, handle, group).FindChannelBuffer(channel);
    if (!found)
        FailNoChannel(call, channel);
    last.Remember(group, channel, *found);
    return *found;
}

CInfoSetItem& InfoOf(const CCall& call, std::uint64_t handle, std::uint64_t info)
{
    CInfoSetItem* const found = InfoSetOf(handle).GetGroup(static_cast<std::uint32_t>(info));
    if (!found)
        call.Fail("No info with given index available. Index: ", std::to_string(info));
    return *found;
}

CInfoSetItem& InfoItemOf(const CCall& call, std::uint64_t handle, std::uint64_t info, std::uint64_t item)
{
    CInfoSetItem* const found = InfoOf(call, handle, info).GetLeaf(static_cast<std::uint32_t>(item));
    if (!found)
        call.Fail("No info item with given index available. Index: ", std::to_string(item));
    return *found;
}

CInfoSetItem& MetaItemOf(const CCall& call, const CInfoSet& infoSet, std::uint64_t item)
{
    CInfoSetItem* const found = infoSet.FindItem(item);
    if (!found)
        call.FailUnknown();
    return *found;
}
