#include "oxd/library/FindChannel.h"

#include "oxd/library/NameList.h"
#include "oxd/system/Failure.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <string_view>

namespace oxd {

namespace {

constexpr std::string_view idMark = "id:";
constexpr std::string_view nameMark = "name:";

// What follows `mark` at the beginning of the text.
std::optional<std::string> Behind(std::string_view mark, const std::string& text)
{
    return text.starts_with(mark) ? std::optional(text.substr(mark.size())) : std::nullopt;
}

std::optional<std::uint64_t> ToNumber(const std::string& text)
{
    std::uint64_t number = 0;
    const char* const end = text.data() + text.size();
    const auto parsed = std::from_chars(text.data(), end, number);
    return parsed.ec == std::errc() && parsed.ptr == end ? std::optional(number) : std::nullopt;
}

std::string GroupName(const DataSet& dataSet, std::uint64_t id)
{
    return dataSet.Text(GetGroupName, id);
}

// Its position.
std::size_t FindGroup(const DataSet& dataSet, const std::vector<std::uint64_t>& ids, const ChannelSelection& wanted)
{
    const auto id = Behind(idMark, wanted.group);
    const std::string name = Behind(nameMark, wanted.group).value_or(wanted.group);
    const auto found = std::find_if(ids.begin(), ids.end(), [&](std::uint64_t candidate) {
        return id ? ToNumber(*id) == candidate : GroupName(dataSet, candidate) == name;
    });
    if (found != ids.end()) {
        return static_cast<std::size_t>(found - ids.begin());
    }
    NameList known("it has no groups");
    for (const std::uint64_t candidate : ids) {
        known.Add(GroupName(dataSet, candidate), std::string(idMark) + std::to_string(candidate));
    }
    throw Failure(ExitCode::No, wanted.file, "no group \"" + wanted.group + "\"; " + known.Sentence());
}

void RequireCertain(const ChannelSelection& wanted, ChannelPlace place, const Channel& channel)
{
    const auto require = [&](const std::vector<ChannelPlace>& suspects, const char* what, const char* fault) {
        if (std::find(suspects.begin(), suspects.end(), place) != suspects.end()) {
            throw Failure(ExitCode::Damaged, wanted.file,
                          what + std::string(" of channel \"") + channel.Name() + "\" " + fault +
                              "; --trust takes them all the same");
        }
    };
    if (!wanted.trust) {
        require(wanted.doubted, "the samples", "may not be its own");
        require(wanted.misread, "the values", "may be wrong");
    }
}

} // namespace

Channel FindChannel(const DataSet& dataSet, const ChannelSelection& wanted)
{
    const std::vector<std::uint64_t> ids = GroupIds(dataSet);
    const std::size_t position = FindGroup(dataSet, ids, wanted);
    const std::uint64_t group = ids[position];
    const auto index = ToNumber(wanted.channel);
    const std::string name = Behind(nameMark, wanted.channel).value_or(wanted.channel);
    const std::uint64_t slots = dataSet.Call(GetChannelCount, group);
    NameList known("it has no channels");
    for (std::uint64_t slot = 0; slot < slots; ++slot) {
        const Channel channel(dataSet, group, slot);
        if (!channel.Exists()) {
            continue;
        }
        if (index ? slot == *index : channel.Name() == name) {
            RequireCertain(wanted, {position, slot}, channel);
            return channel;
        }
        known.Add(channel.Name(), std::to_string(slot));
    }
    throw Failure(ExitCode::No, wanted.file,
                  "no channel \"" + wanted.channel + "\" in group \"" + GroupName(dataSet, group) + "\"; " +
                      known.Sentence());
}

std::vector<std::uint64_t> GroupIds(const DataSet& dataSet)
{
    std::vector<std::uint64_t> ids(dataSet.Call(GetGroupCount));
    if (!ids.empty()) {
        dataSet.Call(GetAllGroupIds, ids.data());
    }
    return ids;
}

} // namespace oxd
