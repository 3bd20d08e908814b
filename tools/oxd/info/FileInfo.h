// What `oxd info` tells of a file: plain data, which one function reads and others turn into text.
#pragma once

#include "oxd/info/ViewInfo.h"
#include "oxd/inspection/InspectFile.h"
#include "oxd/library/Channel.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace oxd {

// In the unit of a signal axis. Both ends are finite.
struct ValueRange
{
    double min;
    double max;
};

// What follows from the samples of a channel. Lines that cannot be read count as unreadable and add nothing else.
struct SampleInfo
{
    std::uint64_t validSamples = 0; // those that were acquired
    std::uint64_t unreadableLines = 0;
    std::optional<int> significantBits = {}; // fewest of 8, 16 and 32 that hold every sample exactly
    std::optional<ValueRange> values = {};   // observed, in the unit of the signal axis
};

struct ChannelInfo
{
    std::uint64_t points = 0;
    std::uint64_t lines = 0;
    Axis pointAxis;
    Axis lineAxis;
    Axis signalAxis;
    bool isCertain = true;                  // otherwise, its samples may be another channel's
    std::optional<SampleInfo> samples = {}; // nothing when samples are not read
};

struct GroupInfo
{
    std::uint64_t id;
    std::uint64_t logicalId;
    std::string name;
    std::vector<std::unique_ptr<ChannelInfo>> channels; // by slot; null for an empty one, since there may be very many
};

// Nodes of information deeper than this are left out: nobody reads them, and programs that read JSON give up on them.
inline constexpr std::size_t shownLevels = 200;

// A node of the tree of measurement information. The tree is a list in the order in which it is shown, so that a deep
// one needs no deep calls: the parent of a node is the last group before it that is one less deep.
struct InfoNode
{
    std::size_t depth; // 0 for a top-level group
    bool isGroup;
    bool isCut; // a group of which nothing inside is shown
    std::string name;
    std::string value; // of an item
};

struct FileInfo
{
    std::string file;
    std::int32_t version = 0;
    bool hasSamples = false; // they were read
    std::vector<GroupInfo> groups;
    std::vector<InfoNode> nodes;
    ViewArea viewArea;
    std::vector<ProcessorInfo> processors;
    std::uint64_t cutGroups = 0;       // groups of information that are cut
    std::vector<std::string> problems; // parts that cannot be read, a sentence each
};

// Which files' samples are read. The few are those that take no noticeable time.
enum class SampleReading
{
    IfFew,
    Always,
    Never
};
inline constexpr std::uint64_t fewSampleBytes = 16U << 20U; // of all channels together, as stored

// Takes everything but what follows from the samples from the header that was inspected. Throws a Failure if the
// library does not open the file. A line that cannot be read is a problem, not a failure, and one also where samples
// are not read.
FileInfo ReadFileInfo(const inspect::Inspection& inspection, SampleReading reading);

// A table for people, in which control characters are replaced and numbers are in multiples of their units.
std::string ToTable(const FileInfo& info);

// A JSON document whose shape docs/oxd.md describes, in base units. It ends with a line feed.
enum class JsonLayout
{
    Indented,
    OneLine
};
std::string ToJson(const FileInfo& info, JsonLayout layout);

} // namespace oxd
