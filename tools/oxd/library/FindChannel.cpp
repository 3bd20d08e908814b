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

class DataSetNames : public ChannelNames
{
public:
    explicit DataSetNames(const DataSet& dataSet) : m_dataSet(&dataSet) {}

    std::vector<std::uint64_t> GroupIds() const override { return oxd::GroupIds(*m_dataSet); }
    std::string GroupName(std::uint64_t group) const override { return m_dataSet->Text(GetGroupName, group); }
    std::uint64_t SlotCount(std::uint64_t group) const override { return m_dataSet->Call(GetChannelCount, group); }
    std::optional<std::string> ChannelName(std::uint64_t group, std::uint64_t slot) const override
    {
        const Channel channel(*m_dataSet, group, slot);
        return channel.Exists() ? std::optional(channel.Name()) : std::nullopt;
    }

private:
    const DataSet* m_dataSet;
};

// Its position.
std::size_t FindGroup(const ChannelNames& names, const std::vector<std::uint64_t>& ids, const ChannelSelection& wanted)
{
    const auto id = Behind(idMark, wanted.group);
    const std::string name = Behind(nameMark, wanted.group).value_or(wanted.group);
    const auto found = std::find_if(ids.begin(), ids.end(), [&](std::uint64_t candidate) {
        return id ? ToNumber(*id) == candidate : names.GroupName(candidate) == name;
    });
    if (found != ids.end()) {
        return static_cast<std::size_t>(found - ids.begin());
    }
    NameList known("it has no groups");
    for (const std::uint64_t candidate : ids) {
        known.Add(names.GroupName(candidate), std::string(idMark) + std::to_string(candidate));
    }
    throw Failure(ExitCode::No, wanted.file, "no group \"" + wanted.group + "\"; " + known.Sentence());
}

void RequireCertain(const ChannelSelection& wanted, ChannelPlace place, const std::string& name)
{
    const auto require = [&](const std::vector<ChannelPlace>& suspects, const char* what, const char* fault) {
        if (std::find(suspects.begin(), suspects.end(), place) != suspects.end()) {
            throw Failure(ExitCode::Damaged, wanted.file,
                          what + std::string(" of channel \"") + name + "\" " + fault +
                              "; --trust takes them all the same");
        }
    };
    if (!wanted.trust) {
        require(wanted.doubted, "the samples", "may not be its own");
        require(wanted.misread, "the values", "may be wrong");
    }
}

} // namespace

ChannelPlace FindPlace(const ChannelNames& names, const ChannelSelection& wanted)
{
    const std::vector<std::uint64_t> ids = names.GroupIds();
    const std::size_t position = FindGroup(names, ids, wanted);
    const std::uint64_t group = ids[position];
    const auto index = ToNumber(wanted.channel);
    const std::string name = Behind(nameMark, wanted.channel).value_or(wanted.channel);
    const std::uint64_t slots = names.SlotCount(group);
    NameList known("it has no channels");
    for (std::uint64_t slot = 0; slot < slots; ++slot) {
        const auto candidate = names.ChannelName(group, slot);
        if (!candidate) {
            continue;
        }
        if (index ? slot == *index : *candidate == name) {
            RequireCertain(wanted, {position, slot}, *candidate);
            return {position, slot};
        }
        known.Add(*candidate, std::to_string(slot));
    }
    throw Failure(ExitCode::No, wanted.file,
                  "no channel \"" + wanted.channel + "\" in group \"" + names.GroupName(group) + "\"; " +
                      known.Sentence());
}

Channel FindChannel(const DataSet& dataSet, const ChannelSelection& wanted)
{
    const ChannelPlace place = FindPlace(DataSetNames(dataSet), wanted);
    return {dataSet, GroupIds(dataSet)[place.group], place.slot};
}

std::vector<ChannelPlace> PlacesOf(const DataSet& dataSet, const ChannelSelection& wanted)
{
    const DataSetNames names(dataSet);
    const std::vector<std::uint64_t> ids = names.GroupIds();
    const std::size_t first = wanted.group.empty() ? 0 : FindGroup(names, ids, wanted);
    const std::size_t end = wanted.group.empty() ? ids.size() : first + 1;
    std::vector<ChannelPlace> places;
    for (std::size_t group = first; group < end; ++group) {
        for (std::uint64_t slot = 0; slot < names.SlotCount(ids[group]); ++slot) {
            if (names.ChannelName(ids[group], slot)) {
                places.push_back({group, slot});
            }
        }
    }
    return places;
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
