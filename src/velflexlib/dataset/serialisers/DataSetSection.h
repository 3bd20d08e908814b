// The section of a header that lists the groups and channels of a data set: all of its keys but those of the
// measurement information, read in both versions and written in the later one, here and nowhere else.
#pragma once

#include "velflexlib/dataset/channels/DataGroup.h"
#include "velstdlib/util/header/HeaderSection.h"

#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace veltaris::velflexlib::dataset {

inline constexpr int framesVersion = 1; // channels of frames, samples channel by channel
inline constexpr int groupsVersion = 2; // groups of channels, samples group by group

// Scan directions share the logical id 0, spectroscopy has 1; other names have none of their own.
std::optional<std::uint32_t> LogicalIdOfWellKnownName(std::string_view name);

struct CPlannedGroup
{
    std::string name;
    std::optional<std::uint32_t> logicalId; // nothing: the data set's next one
    std::uint64_t slotCount = 0;
};

// A filled slot.
struct CPlannedChannel
{
    std::uint64_t group = 0;
    std::uint64_t slot = 0;
    std::string_view section; // empty where version 1 lacks a channel, which is the last one of its plan
};

// All that the section says, before anything is made of it. Group and slot of every channel exist. The names of
// channel sections are views: they live as long as the keys that they were read from. A plain value without locks.
struct CDataSetPlan
{
    int version = 0;
    std::deque<CPlannedGroup> groups;
    std::vector<CPlannedChannel> channels; // in the order of their samples in the file
};

// Throws CVELFileVersionException for an unknown version, and CVELFileBadContentException for more groups than there
// may be or, in version 1, no channels, no frames, or more of them than keys.
CDataSetPlan ReadDataSetSection(const velstdlib::util::CHeaderSection& section);

// The keys that are to blame for what a plan asks for: the one that gives the group its slots, and the one that names
// the channel's section.
std::string SlotCountKey(int version, std::uint64_t group);
std::string ChannelKey(int version, std::uint64_t group, std::uint64_t slot);

// Writes the later version. Groups are numbered by their position.
void WriteDataSetSection(velstdlib::util::CVELKeyToValueList& keys, std::string_view sectionName,
                         const std::vector<std::shared_ptr<CDataGroup>>& groups);

// The section that a channel is written to.
std::string ChannelSectionName(std::string_view sectionName, std::uint64_t group, std::uint64_t slot);

} // namespace veltaris::velflexlib::dataset
