#include "api/Arguments.h"

#include "api/FileManager.h"
#include "api/LastChannel.h"

#include <boost/throw_exception.hpp>

#include <cstring>
#include <stdexcept>

auto CCall::Group(std::uint64_t handle, std::uint64_t group) const -> std::shared_ptr<CDataGroup>
{
    auto found = GetFileHandleStruct(handle).dataSet.GetGroup(group);
    if (!found)
        Fail("No group with given index available. Index: ", std::to_string(group));
    return found;
}

auto CCall::Channel(std::uint64_t handle, std::uint64_t group, std::uint64_t channel) const -> CDataBuffer&
{
    if (CDataBuffer* const last = lastChannel.Find(handle, group, channel))
        return *last;
    const auto found = Group(handle, group)->GetChannelBuffer(channel);
    if (!found)
        FailNoChannel(channel);
    lastChannel.Remember(handle, group, channel, *found);
    return *found;
}

auto CCall::GroupWithSlot(std::uint64_t handle, std::uint64_t group, std::uint64_t channel) const
    -> std::shared_ptr<CDataGroup>
{
    auto found = Group(handle, group);
    if (channel >= found->GetChannelCount())
        FailNoChannel(channel);
    return found;
}

auto CCall::Info(std::uint64_t handle, std::uint64_t info) const -> CInfoSetItem&
{
    CInfoSetItem* const found =
        GetFileHandleStruct(handle).dataSet.GetInfoSet().GetGroup(static_cast<std::uint32_t>(info));
    if (!found)
        Fail("No info with given index available. Index: ", std::to_string(info));
    return *found;
}

auto CCall::InfoItem(std::uint64_t handle, std::uint64_t info, std::uint64_t item) const -> CInfoSetItem&
{
    CInfoSetItem* const found = Info(handle, info).GetLeaf(static_cast<std::uint32_t>(item));
    if (!found)
        Fail("No info item with given index available. Index: ", std::to_string(item));
    return *found;
}

auto CCall::MetaItem(std::uint64_t handle, std::uint64_t item) const -> CInfoSetItem&
{
    CInfoSetItem* const found = GetFileHandleStruct(handle).dataSet.GetInfoSet().FindItem(item);
    if (!found)
        FailUnknown();
    return *found;
}

void CCall::NotNull(const void* pointer) const
{
    if (!pointer)
        Fail("Null pointer");
}

std::string CCall::Text(const char* text) const
{
    NotNull(text);
    return text;
}

void CCall::AtMost(std::uint64_t limit, std::uint64_t value) const
{
    if (value > limit)
        Fail("Value out of range. Min 0, Max ", std::to_string(limit));
}

void CCall::HasRoom(const std::string& text, std::uint64_t size) const
{
    if (text.size() > size - 1) // a size of 0 wraps around and passes
        Fail("Buffer to small. Minimum buffer size: ", std::to_string(text.size() + 1));
}

void CCall::CopyText(const std::string& text, char* buffer, std::uint64_t size) const
{
    HasRoom(text, size);
    NotNull(buffer);
    std::memcpy(buffer, text.c_str(), text.size() + 1);
}

void CCall::Fail(std::string_view reason, std::string_view value) const
{
    std::string text;
    if (!m_action.empty())
        text.append("Unable to ").append(m_action).append(". ");
    FailAlone(text.append(reason), value);
}

void CCall::FailAlone(std::string_view text, std::string_view value) const
{
    boost::throw_exception(std::runtime_error(std::string(text).append(value)), m_where);
}

void CCall::FailUnknown() const
{
    Fail("Unknown error");
}

void CCall::FailNoChannel(std::uint64_t channel) const
{
    Fail("No channel with given name available. Index: ", std::to_string(channel));
}
