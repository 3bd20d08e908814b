// The section of a header that describes one channel: all of its keys, read and written here and nowhere else.
#pragma once

#include "velflexlib/dataset/channels/Databuffer.h"
#include "velstdlib/util/header/HeaderSection.h"

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>

namespace veltaris::velflexlib::dataset {

// What a section says of a channel, before anything is made of it. It is only text that was read: points, lines and
// bit count may be more than any file holds, or none that a file can have. A plain value without locks.
struct CChannelHeader
{
    std::uint64_t points = 0;
    std::uint64_t lines = 0;
    std::string frame;
    std::int64_t currentLine = 0;
    std::array<CAxis, 3> axes;
    std::map<std::uint64_t, CLineAxis> ownLineAxes; // of lines that differ; no more than the section has keys
    std::int64_t bitCount = 0;
};

inline constexpr std::string_view channelLinesKey = "Lines";

// Throws CVELFileVersionException for a version that is too high, and CVELFileBadContentException for a negative
// number of points or lines.
CChannelHeader ReadChannelSection(const velstdlib::util::CHeaderSection& section);

// Writes the highest version only if some line needs it. The keys must be those of an empty section.
void WriteChannelSection(velstdlib::util::CVELKeyToValueList& keys, const CDataBuffer& buffer);

} // namespace veltaris::velflexlib::dataset
