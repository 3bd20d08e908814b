// What `oxd info` tells of a file.
#pragma once

#include "Channel.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace oxd {

struct ValueRange
{
    double min;
    double max;
};

struct ChannelInfo
{
    std::uint64_t points;
    std::uint64_t lines;
    Axis pointAxis;
    Axis lineAxis;
    Axis signalAxis;
    std::uint64_t validSamples = 0;
    std::uint64_t unreadableLines = 0;
    std::optional<int> significantBits = {}; // fewest of 8, 16 and 32 that hold every sample exactly
    std::optional<ValueRange> values = {};   // observed, in the unit of the signal axis
};

struct GroupInfo
{
    std::uint64_t id;
    std::uint64_t logicalId;
    std::string name;
    std::vector<std::optional<ChannelInfo>> channels; // by slot; an empty slot has none
};

struct FileInfo
{
    std::string file;
    std::int32_t version = 0;
    std::vector<GroupInfo> groups;
    std::vector<std::string> problems; // parts that could not be read, a sentence each
};

// Throws a Failure if `file` cannot be opened. A line that cannot be read is a problem, not a failure.
FileInfo ReadFileInfo(const std::string& file);

// A table for people, and a JSON document whose shape docs/oxd.md describes.
std::string ToTable(const FileInfo& info);
std::string ToJson(const FileInfo& info);

} // namespace oxd
