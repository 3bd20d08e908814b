#include "velflexlib/dataset/serialisers/DataSetSection.h"

#include "velstdlib/string/FoldedText.h"
#include "velstdlib/util/Limits.h"
#include "velstdlib/util/VELException.h"
#include "velstdlib/util/header/HeaderText.h"
#include "velstdlib/util/header/IndexedKey.h"

#include <algorithm>
#include <utility>

namespace veltaris::velflexlib::dataset {

using velstdlib::util::CVELKeyToValueList;
using velstdlib::util::SplitIndexedKey;

namespace {

constexpr int noLogicalId = -1;
constexpr std::string_view groupPrefix = "Gr";
constexpr std::string_view channelPrefix = "-Ch"; // behind the number of the group

// A negative count is none.
std::uint64_t ReadCount(const CVELKeyToValueList& keys, const std::string& key)
{
    return static_cast<std::uint64_t>(std::max(keys.GetValueT<int>(key, 0), 0));
}

std::string GroupKey(std::uint64_t group, std::string_view property)
{
    return std::string(groupPrefix).append(std::to_string(group)).append(property);
}

} // namespace

std::optional<std::uint32_t> LogicalIdOfWellKnownName(std::string_view name)
{
    using velstdlib::string::EqualFolded;
    if (EqualFolded(name, "ForwardScan") || EqualFolded(name, "BackwardScan"))
        return 0;
    if (EqualFolded(name, "Spectroscopy"))
        return 1;
    return std::nullopt;
}

CFrameList ReadFrameList(const CVELKeyToValueList& keys, const std::string& fileName)
{
    const CFrameList frames{ReadCount(keys, "ChannelCount"), ReadCount(keys, "FrameCount")};
    if (frames.SlotCount() == 0 || frames.SlotCount() > keys.GetCount())
        velstdlib::util::ThrowBadContent(fileName);
    return frames;
}

std::string ReadFrameChannel(const CVELKeyToValueList& keys, std::size_t channel, std::size_t frame,
                             const std::string& fileName)
{
    std::string section = keys.GetValue("Ch" + std::to_string(channel) + "-Fr" + std::to_string(frame));
    if (section.empty())
        velstdlib::util::ThrowBadContent(fileName);
    return section;
}

std::uint64_t ReadGroupCount(const CVELKeyToValueList& keys, const std::string& fileName)
{
    const std::uint64_t count = ReadCount(keys, "GroupCount");
    if (count > std::max<std::uint64_t>(velstdlib::util::limits::listEntries, keys.GetCount()))
        velstdlib::util::ThrowBadContent(fileName);
    return count;
}

CGroupKeys ReadGroupKeys(const CVELKeyToValueList& keys, std::uint64_t group)
{
    CGroupKeys read;
    read.name = keys.GetValue(GroupKey(group, "-Name"), "Group" + std::to_string(group));
    const int id = keys.GetValueT<int>(GroupKey(group, "-ID"), noLogicalId);
    read.logicalId =
        id == noLogicalId ? LogicalIdOfWellKnownName(read.name) : std::optional(static_cast<std::uint32_t>(id));
    read.slotCount = ReadCount(keys, GroupKey(group, "-Count"));
    return read;
}

void WriteGroupKeys(CVELKeyToValueList& keys, std::uint64_t group, const CDataGroup& content)
{
    keys.SetValue(GroupKey(group, "-Name"), velstdlib::util::CleanHeaderText(content.GetName()));
    const auto id = static_cast<std::int32_t>(content.GetLogicalGroupId());
    keys.SetValue(GroupKey(group, "-ID"), std::to_string(id));
    keys.SetValue(GroupKey(group, "-Count"), content.GetChannelCount());
}

std::string GroupChannelKey(std::size_t group, std::size_t channel)
{
    return GroupKey(group, channelPrefix) + std::to_string(channel);
}

std::vector<CGroupChannel> ReadGroupChannels(const CVELKeyToValueList& keys)
{
    std::vector<CGroupChannel> channels;
    keys.ForEach([&](std::string_view key, std::string_view section) {
        const auto group = SplitIndexedKey(key, groupPrefix);
        const auto channel = group ? SplitIndexedKey(group->rest, channelPrefix) : std::nullopt;
        if (channel && channel->rest.empty())
            channels.push_back({group->index, channel->index, section});
    });
    std::ranges::sort(channels, {}, [](const CGroupChannel& c) { return std::pair(c.group, c.slot); });
    return channels;
}

std::string ChannelSectionName(const std::string& section, std::size_t group, std::size_t channel)
{
    return section + "-" + std::to_string(group) + ":" + std::to_string(channel);
}

} // namespace veltaris::velflexlib::dataset
