// What `oxd info` tells of a file.
#pragma once

#include "oxd/library/Channel.h"

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

// Nodes of information deeper than this are left out: nobody reads them, and programs that read JSON give up.
inline constexpr std::size_t shownLevels = 200;

// A node of the tree of measurement information. It is below the last node before it that is less deep.
struct InfoNode
{
    std::size_t depth; // 0 for a top-level group
    bool isGroup;
    bool isCut; // a group of which nothing inside is shown
    std::string name;
    std::string value;
};

struct FileInfo
{
    std::string file;
    std::int32_t version = 0;
    std::vector<GroupInfo> groups;
    std::vector<InfoNode> nodes;
    std::uint64_t cutGroups = 0;
    std::vector<std::string> problems; // parts that could not be read, a sentence each
};

// Throws a Failure if `file` cannot be opened. A line that cannot be read is a problem, not a failure.
FileInfo ReadFileInfo(const std::string& file);

// A table for people, and a JSON document whose shape docs/oxd.md describes.
std::string ToTable(const FileInfo& info);
std::string ToJson(const FileInfo& info);

} // namespace oxd
