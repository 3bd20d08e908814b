#include "velflexlib/dataset/serialisers/DataSetSection.h"

#include "velstdlib/math/Product.h"
#include "velstdlib/string/FoldedText.h"
#include "velstdlib/util/VELException.h"
#include "velstdlib/util/header/HeaderText.h"
#include "velstdlib/util/header/IndexedKey.h"
#include "velstdlib/util/header/ListCount.h"

#include <algorithm>
#include <utility>

namespace veltaris::velflexlib::dataset {

using velstdlib::util::CHeaderSection;
using velstdlib::util::CVELKeyToValueList;
using velstdlib::util::noCountLimit;
using velstdlib::util::ReadListCount;
using velstdlib::util::SplitIndexedKey;

namespace {

constexpr std::string_view dataSetVersionKey = "Version";

// Version 1.
constexpr std::string_view channelCountKey = "ChannelCount";
constexpr std::string_view frameCountKey = "FrameCount";
constexpr std::string_view frameChannelPrefix = "Ch";
constexpr std::string_view frameInfix = "-Fr"; // behind the number of the channel

// Version 2.
constexpr std::string_view groupCountKey = "GroupCount";
constexpr std::string_view groupPrefix = "Gr";
constexpr std::string_view nameKey = "-Name"; // this and the next three behind the number of the group
constexpr std::string_view groupId = "-ID";
constexpr std::string_view groupSlotCount = "-Count";
constexpr std::string_view channelInfix = "-Ch";
constexpr int noLogicalId = -1;

std::string GroupKey(std::uint64_t group, std::string_view property)
{
    return std::string(groupPrefix).append(std::to_string(group)).append(property);
}

std::string DoublyIndexedKey(std::string_view prefix, std::uint64_t first, std::string_view infix, std::uint64_t second)
{
    return std::string(prefix).append(std::to_string(first)).append(infix).append(std::to_string(second));
}

// Calls use(first, second, value) for every key that has this form. The keys that exist bound the work: the counts
// beside them would not.
template <class Use>
void ForEachDoublyIndexed(const CVELKeyToValueList& keys, std::string_view prefix, std::string_view infix, Use use)
{
    keys.ForEach([&](std::string_view key, std::string_view value) {
        const auto first = SplitIndexedKey(key, prefix);
        const auto second = first ? SplitIndexedKey(first->rest, infix) : std::nullopt;
        if (second && second->rest.empty())
            use(first->index, second->index, value);
    });
}

// Frames must have a key for each of their channels: more than there are keys cannot be meant.
void CheckFrames(const CHeaderSection& section, std::uint64_t channelCount, std::uint64_t frameCount)
{
    const std::uint64_t slots = velstdlib::math::Product(channelCount, frameCount);
    if (slots == 0)
        section.ThrowBadContent(channelCount == 0 ? channelCountKey : frameCountKey);
    if (slots > section.keys.GetCount())
        section.ThrowBadContent(channelCount > frameCount ? channelCountKey : frameCountKey);
}

std::vector<CPlannedChannel> FrameChannels(const CVELKeyToValueList& keys, std::uint64_t channelCount,
                                           std::uint64_t frameCount)
{
    std::vector<CPlannedChannel> channels;
    ForEachDoublyIndexed(keys, frameChannelPrefix, frameInfix,
                         [&](std::uint64_t channel, std::uint64_t frame, std::string_view section) {
                             if (channel < channelCount && frame < frameCount)
                                 channels.push_back({frame, channel, section});
                         });
    std::ranges::sort(channels, {}, [](const CPlannedChannel& c) { return std::pair(c.slot, c.group); });
    return channels;
}

// Ends the plan at the first channel that the section lacks.
void MarkMissingChannel(std::vector<CPlannedChannel>& channels, std::uint64_t channelCount, std::uint64_t frameCount)
{
    std::uint64_t expected = 0;
    for (const CPlannedChannel& channel : channels) {
        if (channel.slot * frameCount + channel.group != expected)
            break;
        ++expected;
    }
    if (expected == channelCount * frameCount)
        return;
    channels.resize(expected);
    channels.push_back({expected % frameCount, expected / frameCount, {}});
}

CDataSetPlan PlanFrames(const CHeaderSection& section)
{
    const auto channelCount = ReadListCount<int>(section, channelCountKey, noCountLimit);
    const auto frameCount = ReadListCount<int>(section, frameCountKey, noCountLimit);
    CheckFrames(section, channelCount, frameCount);
    CDataSetPlan plan{framesVersion, {}, FrameChannels(section.keys, channelCount, frameCount)};
    for (std::uint64_t frame = 0; frame < frameCount; ++frame)
        plan.groups.push_back({std::string(section.name), static_cast<std::uint32_t>(frame), channelCount});
    MarkMissingChannel(plan.channels, channelCount, frameCount);
    return plan;
}

CPlannedGroup PlanGroup(const CHeaderSection& section, std::uint64_t group)
{
    std::string name = section.keys.GetValue(GroupKey(group, nameKey), "Group" + std::to_string(group));
    const int id = section.keys.GetValueT<int>(GroupKey(group, groupId), noLogicalId);
    const auto logicalId =
        id == noLogicalId ? LogicalIdOfWellKnownName(name) : std::optional(static_cast<std::uint32_t>(id));
    return {std::move(name), logicalId, ReadListCount<int>(section, GroupKey(group, groupSlotCount), noCountLimit)};
}

std::vector<CPlannedChannel> GroupChannels(const CVELKeyToValueList& keys, const std::deque<CPlannedGroup>& groups)
{
    std::vector<CPlannedChannel> channels;
    ForEachDoublyIndexed(keys, groupPrefix, channelInfix,
                         [&](std::uint64_t group, std::uint64_t slot, std::string_view section) {
                             if (group < groups.size() && slot < groups[group].slotCount)
                                 channels.push_back({group, slot, section});
                         });
    std::ranges::sort(channels, {}, [](const CPlannedChannel& c) { return std::pair(c.group, c.slot); });
    return channels;
}

CDataSetPlan PlanGroups(const CHeaderSection& section)
{
    const auto count = ReadListCount<int>(section, groupCountKey, velstdlib::util::LimitByKeys(section.keys));
    CDataSetPlan plan{groupsVersion, {}, {}};
    for (std::uint64_t group = 0; group < count; ++group)
        plan.groups.push_back(PlanGroup(section, group));
    plan.channels = GroupChannels(section.keys, plan.groups);
    return plan;
}

void WriteGroup(CVELKeyToValueList& keys, std::uint64_t group, const CDataGroup& content)
{
    keys.SetValue(GroupKey(group, nameKey), velstdlib::util::CleanHeaderText(content.GetName()));
    const auto id = static_cast<std::int32_t>(content.GetLogicalGroupId());
    keys.SetValue(GroupKey(group, groupId), std::to_string(id));
    keys.SetValue(GroupKey(group, groupSlotCount), content.GetChannelCount());
}

void WriteChannels(CVELKeyToValueList& keys, std::string_view sectionName, std::uint64_t group,
                   const CDataGroup& content)
{
    const auto buffers = content.GetChannelBuffers();
    for (std::size_t slot = 0; slot < buffers.size(); ++slot) {
        if (buffers[slot])
            keys.SetValue(ChannelKey(groupsVersion, group, slot), ChannelSectionName(sectionName, group, slot));
    }
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

CDataSetPlan ReadDataSetSection(const CHeaderSection& section)
{
    const int version = section.keys.GetValueT<int>(dataSetVersionKey, framesVersion);
    switch (version) {
    case framesVersion:
        return PlanFrames(section);
    case groupsVersion:
        return PlanGroups(section);
    default:
        velstdlib::util::ThrowFileVersion(std::string(section.fileName), version);
    }
}

std::string SlotCountKey(int version, std::uint64_t group)
{
    return version == framesVersion ? std::string(frameCountKey) : GroupKey(group, groupSlotCount);
}

std::string ChannelKey(int version, std::uint64_t group, std::uint64_t slot)
{
    return version == framesVersion ? DoublyIndexedKey(frameChannelPrefix, slot, frameInfix, group)
                                    : DoublyIndexedKey(groupPrefix, group, channelInfix, slot);
}

void WriteDataSetSection(CVELKeyToValueList& keys, std::string_view sectionName,
                         const std::vector<std::shared_ptr<CDataGroup>>& groups)
{
    keys.SetValue(dataSetVersionKey, groupsVersion);
    keys.SetValue(groupCountKey, groups.size());
    for (std::size_t group = 0; group < groups.size(); ++group)
        WriteGroup(keys, group, *groups[group]);
    for (std::size_t group = 0; group < groups.size(); ++group)
        WriteChannels(keys, sectionName, group, *groups[group]);
}

std::string ChannelSectionName(std::string_view sectionName, std::uint64_t group, std::uint64_t slot)
{
    return DoublyIndexedKey(std::string(sectionName).append("-"), group, ":", slot);
}

} // namespace veltaris::velflexlib::dataset
