#include "oxd/info/FileInfo.h"

#include "oxd/library/FindChannel.h"
#include "oxd/library/LineOperators.h"
#include "oxd/library/LineTally.h"
#include "oxd/library/MetaNode.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace oxd {

namespace {

// A sample has 30 bits, and one that is stored in 8 or 16 has only the highest of them: these below are zero.
constexpr std::uint32_t bitsBelow8 = (1U << 22) - 1;
constexpr std::uint32_t bitsBelow16 = (1U << 14) - 1;

// Gathers what depends on the samples, line by line.
class SampleStatistics
{
public:
    void Add(const std::vector<std::int32_t>& samples, const std::vector<double>& values)
    {
        for (const std::int32_t sample : samples) {
            m_bitsInUse |= static_cast<std::uint32_t>(sample);
        }
        for (const double value : values) {
            if (std::isfinite(value)) {
                m_range.min = std::min(m_range.min, value);
                m_range.max = std::max(m_range.max, value);
            }
        }
        m_count += samples.size();
    }

    void Store(ChannelInfo& info) const
    {
        info.validSamples = m_count;
        if (m_count > 0) {
            info.significantBits = (m_bitsInUse & bitsBelow8) == 0 ? 8 : (m_bitsInUse & bitsBelow16) == 0 ? 16 : 32;
        }
        if (m_range.min <= m_range.max) { // there were none if the axis gives no finite numbers
            info.values = m_range;
        }
    }

private:
    std::uint64_t m_count = 0;
    std::uint32_t m_bitsInUse = 0;
    ValueRange m_range{std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity()};
};

LineTally ReadSamples(const Channel& channel, ChannelInfo& info)
{
    SampleStatistics statistics;
    LineTally unreadable;
    for (std::uint64_t line = 0; line < info.lines; ++line) {
        try {
            statistics.Add(channel.ReadRaw(line, rawData.code), channel.ReadReal(line, rawData.code));
        } catch (const LibraryError& error) {
            unreadable.Add(line, error.what());
        }
    }
    statistics.Store(info);
    info.unreadableLines = unreadable.Count();
    return unreadable;
}

class Reader
{
public:
    explicit Reader(const std::string& file) : m_dataSet(DataSet::Open(file)) { m_info.file = file; }

    FileInfo Read()
    {
        m_info.version = m_dataSet.Call(GetOxdVersion);
        for (const std::uint64_t id : GroupIds(m_dataSet)) {
            m_info.groups.push_back(ReadGroup(id));
        }
        ReadInformation();
        return std::move(m_info);
    }

private:
    GroupInfo ReadGroup(std::uint64_t id)
    {
        GroupInfo group{id, m_dataSet.Call(GetLogicalGroupId, id), m_dataSet.Text(GetGroupName, id), {}};
        const std::uint64_t count = m_dataSet.Call(GetChannelCount, id);
        for (std::uint64_t index = 0; index < count; ++index) {
            const Channel channel(m_dataSet, id, index);
            group.channels.push_back(channel.Exists() ? std::optional(ReadChannel(channel, id, index)) : std::nullopt);
        }
        return group;
    }

    ChannelInfo ReadChannel(const Channel& channel, std::uint64_t group, std::uint64_t index)
    {
        ChannelInfo info{.points = channel.Points(),
                         .lines = channel.Lines(),
                         .pointAxis = channel.ReadAxis(pointAxis),
                         .lineAxis = channel.ReadAxis(lineAxis),
                         .signalAxis = channel.ReadAxis(signalAxis)};
        const LineTally unreadable = ReadSamples(channel, info);
        if (unreadable.Count() > 0) {
            m_info.problems.push_back("group " + std::to_string(group) + ", channel " + std::to_string(index) + ": " +
                                      unreadable.Sentence("cannot be read"));
        }
        return info;
    }

    // In order. The groups that lead to the current node are on a stack made here, because a file may nest groups
    // deeper than calls can be nested.
    void ReadInformation()
    {
        std::vector<MetaChildren> path{MetaChildren(MetaNode::Root(m_dataSet))};
        while (!path.empty()) {
            const auto node = path.back().Next();
            if (!node) {
                path.pop_back();
            } else if (AddNode(*node, path.size() - 1)) {
                path.emplace_back(*node);
            }
        }
    }

    // Gives whether there is more to show below the node.
    bool AddNode(const MetaNode& node, std::size_t depth)
    {
        const bool isGroup = node.IsGroup();
        const bool hasMore = isGroup && node.ChildCount() > 0;
        const bool isCut = hasMore && depth + 1 == shownLevels;
        m_info.nodes.push_back({depth, isGroup, isCut, node.Name(), isGroup ? std::string() : node.Value()});
        m_info.cutGroups += isCut ? 1 : 0;
        return hasMore && !isCut;
    }

    DataSet m_dataSet;
    FileInfo m_info;
};

} // namespace

FileInfo ReadFileInfo(const std::string& file)
{
    return Reader(file).Read();
}

} // namespace oxd
