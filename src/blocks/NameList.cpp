#include "blocks/NameList.h"

#include "blocks/Verdict.h"

#include <cstdlib>
#include <cstring>
#include <string_view>

namespace veltaris::blocks {

namespace {

// How many bytes the text needs for which there was no room, by the failure that the library has stored; 0 if it is
// another failure. Lowers the error flag.
std::size_t NeededSize()
{
    static constexpr std::string_view reason = "Buffer to small. Minimum buffer size: ";
    const char* const found = std::strstr(VELGetLastError(), reason.data());
    return found == nullptr ? 0 : static_cast<std::size_t>(std::strtoull(found + reason.size(), nullptr, 10));
}

// Appends to the texts what copy(buffer, size) copies, as the library's functions do. The library takes a size of 0 as
// one without limit.
template <class Copy>
std::int32_t AppendText(VELBlockNames& names, Copy copy)
{
    char none = 0;
    const std::size_t left = names.size - names.bytes;
    char* const end = left > 0 ? names.texts + names.bytes : &none;
    copy(end, left > 0 ? left : 1);
    if (VELHasLastError()) {
        const std::size_t needed = NeededSize();
        names.bytes += needed;
        return needed > 0 ? VEL_BLOCK_TOO_SMALL : VEL_BLOCK_FAILED;
    }
    names.bytes += std::strlen(end) + 1;
    return left > 0 ? VEL_BLOCK_OK : VEL_BLOCK_TOO_SMALL; // an empty text fits into any buffer but none at all
}

// Appends the name of number names.count, which copy copies.
template <class Copy>
std::int32_t AppendName(VELBlockNames& names, Copy copy)
{
    ++names.count;
    return AppendText(names, copy);
}

bool AreArrays(const VELBlockNames& names)
{
    return (names.numbers != nullptr || names.room == 0) && (names.texts != nullptr || names.size == 0);
}

// Empties the list. The result tells whether it can be filled.
std::int32_t Begin(VELBlockNames& names)
{
    names.count = 0;
    names.bytes = 0;
    BeginCalls();
    return AreArrays(names) ? VEL_BLOCK_OK : VEL_BLOCK_BAD_CALL;
}

// Appends a channel if the slot holds one.
std::int32_t AppendChannel(std::uint64_t file, std::uint64_t group, std::uint64_t slot, VELBlockNames& names)
{
    const bool isThere = HasChannelBuffer(file, group, slot);
    if (!isThere)
        return EndCalls();
    if (names.count < names.room)
        names.numbers[names.count] = slot;
    const std::int32_t result = AppendName(
        names, [=](char* buffer, std::size_t size) { GetChannelData_SignalAxisName(file, group, slot, buffer, size); });
    return result == VEL_BLOCK_OK && names.count > names.room ? VEL_BLOCK_TOO_SMALL : result;
}

} // namespace

std::int32_t ListGroups(std::uint64_t file, VELBlockNames& names)
{
    std::int32_t result = Begin(names);
    if (result != VEL_BLOCK_OK)
        return result;
    const std::uint64_t groups = GetGroupCount(file);
    result = EndCalls();
    if (result != VEL_BLOCK_OK || groups == 0)
        return result;
    if (groups > names.room) {
        names.count = groups;
        return VEL_BLOCK_TOO_SMALL;
    }
    GetAllGroupIds(file, names.numbers);
    result = EndCalls();
    while (result == VEL_BLOCK_OK && names.count < groups) {
        const std::uint64_t group = names.numbers[names.count];
        result = AppendName(names, [=](char* buffer, std::size_t size) { GetGroupName(file, group, buffer, size); });
    }
    return result;
}

std::int32_t ListChannels(std::uint64_t file, std::uint64_t group, VELBlockNames& names)
{
    std::int32_t result = Begin(names);
    if (result != VEL_BLOCK_OK)
        return result;
    const std::uint64_t slots = GetChannelCount(file, group);
    result = EndCalls();
    for (std::uint64_t slot = 0; slot < slots && result == VEL_BLOCK_OK; ++slot)
        result = AppendChannel(file, group, slot, names);
    return result;
}

} // namespace veltaris::blocks
