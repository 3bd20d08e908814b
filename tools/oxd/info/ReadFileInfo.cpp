#include "oxd/info/FileInfo.h"

#include "oxd/info/SampleInfo.h"
#include "oxd/inspection/HeaderNode.h"

#include <algorithm>

namespace oxd {

namespace {

namespace model = veltaris::velflexlib::dataset;

Axis ToAxis(const model::CAxis& axis)
{
    return {UntilNul(axis.name), UntilNul(axis.unit), axis.min, axis.range};
}

// What the header tells.
class HeaderReader
{
public:
    HeaderReader(const inspect::Inspection& inspection, FileInfo& info) : m_inspection(&inspection), m_info(&info) {}

    void Read()
    {
        m_info->file = m_inspection->file;
        m_info->version = m_inspection->version.value_or(0);
        const std::vector<int> ids = m_inspection->dataSet->GetAllGroupIds();
        const auto groups = m_inspection->dataSet->GetAllGroups();
        for (std::size_t position = 0; position < ids.size(); ++position) {
            m_info->groups.push_back(ReadGroup(static_cast<std::uint64_t>(ids[position]), *groups[position]));
        }
        MarkUncertain();
        ReadInformation();
        m_info->viewArea = ReadViews(*m_inspection);
        m_info->processors = ReadProcessors(*m_inspection);
    }

private:
    static GroupInfo ReadGroup(std::uint64_t id, const model::CDataGroup& group)
    {
        GroupInfo info{id, group.GetLogicalGroupId(), UntilNul(group.GetName()), {}};
        for (const auto& channel : group.GetChannelBuffers()) {
            info.channels.push_back(channel ? std::make_unique<ChannelInfo>(ReadChannel(*channel)) : nullptr);
        }
        return info;
    }

    static ChannelInfo ReadChannel(const model::CDataBuffer& channel)
    {
        return {.points = channel.GetPoints(),
                .lines = channel.GetLines(),
                .pointAxis = ToAxis(channel.GetAxis(model::pointAxis)),
                .lineAxis = ToAxis(channel.GetAxis(model::lineAxis)),
                .signalAxis = ToAxis(channel.GetAxis(model::signalAxis))};
    }

    void MarkUncertain()
    {
        for (const inspect::ChannelSamples& samples : m_inspection->channels) {
            const auto& channel = m_info->groups.at(samples.group).channels.at(samples.slot);
            if (channel) {
                channel->isCertain = samples.isCertain;
            }
        }
    }

    // In order. The groups that lead to the current node are on a stack made here, because a file may nest groups
    // deeper than calls can be nested.
    void ReadInformation()
    {
        struct Level
        {
            HeaderNode group;
            std::size_t next;
        };
        std::vector<Level> path{{HeaderNode::Root(*m_inspection->dataSet), 0}};
        while (!path.empty()) {
            Level& level = path.back();
            if (level.next == level.group.ChildCount()) {
                path.pop_back();
                continue;
            }
            const HeaderNode node = level.group.Child(level.next++);
            if (AddNode(node, path.size() - 1)) {
                path.push_back({node, 0});
            }
        }
    }

    // Gives whether there is more to show below the node.
    bool AddNode(const HeaderNode& node, std::size_t depth)
    {
        const bool isGroup = node.IsGroup();
        const bool hasMore = isGroup && node.ChildCount() > 0;
        const bool isCut = hasMore && depth + 1 == shownLevels;
        m_info->nodes.push_back({depth, isGroup, isCut, node.Name(), isGroup ? std::string() : node.Value()});
        m_info->cutGroups += isCut ? 1 : 0;
        return hasMore && !isCut;
    }

    const inspect::Inspection* m_inspection;
    FileInfo* m_info;
};

// The header tells which lines cannot be read.
void AddUnreadableLines(const inspect::Inspection& inspection, FileInfo& info)
{
    const auto isUnreadable = [](const inspect::Finding& finding) {
        return finding.rule->number == inspect::RuleId::LineTooLong;
    };
    if (std::any_of(inspection.findings.begin(), inspection.findings.end(), isUnreadable)) {
        info.problems.emplace_back("some lines cannot be read");
    }
}

} // namespace

FileInfo ReadFileInfo(const inspect::Inspection& inspection, SampleReading reading)
{
    RequireOpens(inspection);
    FileInfo info;
    HeaderReader(inspection, info).Read();
    const bool isFew = inspection.claimedBytes <= fewSampleBytes;
    if (reading == SampleReading::Always || (reading == SampleReading::IfFew && isFew)) {
        ReadAllSamples(info);
    } else {
        AddUnreadableLines(inspection, info);
    }
    return info;
}

} // namespace oxd
