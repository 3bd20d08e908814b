// The keys of the data-set section of a header, in both versions.
#pragma once

#include "velflexlib/dataset/channels/DataGroup.h"
#include "velstdlib/math/Product.h"
#include "velstdlib/util/header/VELKeyToValue.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace veltaris::velflexlib::dataset {

// Scan directions share the logical id 0, spectroscopy has 1; other names have none of their own.
std::optional<std::uint32_t> LogicalIdOfWellKnownName(std::string_view name);

// Version 1: frames of as many channels each.
struct CFrameList
{
    std::uint64_t channelCount;
    std::uint64_t frameCount;

    std::uint64_t SlotCount() const { return velstdlib::math::Product(channelCount, frameCount); }
};

// Throws CVELFileBadContentException, with the file's name, when there are no channels or no frames, or fewer keys
// than these would need.
CFrameList ReadFrameList(const velstdlib::util::CVELKeyToValueList& keys, const std::string& fileName);

// The section of one channel; throws CVELFileBadContentException when the list lacks it.
std::string ReadFrameChannel(const velstdlib::util::CVELKeyToValueList& keys, std::size_t channel, std::size_t frame,
                             const std::string& fileName);

// Version 2: groups.
struct CGroupKeys
{
    std::string name;
    std::optional<std::uint32_t> logicalId; // nothing: the data set's next one
    std::size_t slotCount = 0;
};

// Throws CVELFileBadContentException above the limit.
std::uint64_t ReadGroupCount(const velstdlib::util::CVELKeyToValueList& keys, const std::string& fileName);
CGroupKeys ReadGroupKeys(const velstdlib::util::CVELKeyToValueList& keys, std::uint64_t group);
void WriteGroupKeys(velstdlib::util::CVELKeyToValueList& keys, std::uint64_t group, const CDataGroup& content);

std::string GroupChannelKey(std::size_t group, std::size_t channel);

// A filled slot. The section's name lives as long as the keys.
struct CGroupChannel
{
    std::uint64_t group;
    std::uint64_t slot;
    std::string_view section;
};

// All of them, in the order of groups and slots. The keys that there are bound the work: the counts beside them would
// not. Slots and groups may be beyond these.
std::vector<CGroupChannel> ReadGroupChannels(const velstdlib::util::CVELKeyToValueList& keys);
std::string ChannelSectionName(const std::string& section, std::size_t group, std::size_t channel);

} // namespace veltaris::velflexlib::dataset
