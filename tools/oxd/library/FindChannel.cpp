#include "oxd/library/FindChannel.h"

#include "oxd/system/Failure.h"

#include <charconv>
#include <optional>

namespace oxd {

namespace {

std::uint64_t FindGroup(const DataSet& dataSet, const ChannelSelection& wanted)
{
    try {
        return dataSet.Call(GetGroupId, wanted.group.c_str());
    } catch (const LibraryError&) {
        throw Failure(ExitCode::No, wanted.file, "no group named \"" + wanted.group + "\"");
    }
}

std::optional<std::uint64_t> ToIndex(const std::string& text)
{
    std::uint64_t index = 0;
    const char* const end = text.data() + text.size();
    const auto parsed = std::from_chars(text.data(), end, index);
    return parsed.ec == std::errc() && parsed.ptr == end ? std::optional(index) : std::nullopt;
}

bool Matches(const Channel& channel, std::uint64_t slot, const std::string& wanted)
{
    if (!channel.Exists()) {
        return false;
    }
    const auto index = ToIndex(wanted);
    return index ? slot == *index : channel.Name() == wanted;
}

} // namespace

Channel FindChannel(const DataSet& dataSet, const ChannelSelection& wanted)
{
    const std::uint64_t group = FindGroup(dataSet, wanted);
    const std::uint64_t slots = dataSet.Call(GetChannelCount, group);
    for (std::uint64_t slot = 0; slot < slots; ++slot) {
        const Channel channel(dataSet, group, slot);
        if (Matches(channel, slot, wanted.channel)) {
            return channel;
        }
    }
    throw Failure(ExitCode::No, wanted.file, "no channel \"" + wanted.channel + "\" in group \"" + wanted.group + "\"");
}

} // namespace oxd
