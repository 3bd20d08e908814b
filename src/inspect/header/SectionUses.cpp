#include "inspect/header/SectionUses.h"

#include "velstdlib/string/FoldedText.h"

#include <utility>

namespace veltaris::inspect {

namespace {

constexpr std::string_view processorPrefix = "ProcessorSet-";

std::uint64_t CountOf(const CHeaderLines& lines, std::uint32_t section, std::string_view key)
{
    const int count = lines.IntOf(section, key, 0);
    return count < 0 ? 0 : static_cast<std::uint64_t>(count);
}

} // namespace

CSectionUses::CSectionUses(const CHeaderLines& lines)
    : m_lines(lines), m_uses(lines.SectionCount()), m_dataSet(lines.FindSection(dataSetName)),
      m_version(lines.IntOf(m_dataSet, "Version", 1))
{
    Mark(m_dataSet, SectionUse::DataSet);
    FollowChannels();
    FollowFlatInfo();
    FollowViews();
    if (m_version == 1)
        return;
    FollowInfoTree();
    FollowProcessors();
}

bool CSectionUses::Mark(std::uint32_t section, SectionUse use)
{
    if (section == noSection)
        return false;
    const bool isNew = !Has(section, use);
    m_uses[section] = static_cast<std::uint16_t>(m_uses[section] | static_cast<std::uint16_t>(use));
    return isNew;
}

bool CSectionUses::IsBelowCount(const HeaderLine& line, const KnownKey& key) const
{
    const KeySpec& spec = *key.spec;
    if (spec.countKey.empty())
        return true;
    if (key.indices.first >= CountOf(m_lines, line.section, spec.countKey))
        return false;
    if (spec.pattern == "Gr#-Ch#") {
        const std::string slots = "Gr" + std::to_string(key.indices.first) + "-Count";
        return key.indices.second < CountOf(m_lines, line.section, slots);
    }
    return spec.pattern != "Ch#-Fr#" || key.indices.second < CountOf(m_lines, line.section, "FrameCount");
}

template <class Use>
void CSectionUses::ForEachLink(std::uint32_t section, SectionUse use, std::string_view pattern, Use follow) const
{
    for (const std::uint32_t position : m_lines.LinesOf(section)) {
        const HeaderLine& line = m_lines.Lines()[position];
        if (line.isReplaced || line.kind != HeaderLine::Kind::Key)
            continue;
        const auto key = FindKeySpec(use, m_version, m_lines.Key(line));
        if (key && key->spec->pattern == pattern && IsBelowCount(line, *key))
            follow(line, key->indices);
    }
}

void CSectionUses::FollowChannels()
{
    const bool hasFrames = m_version == 1;
    ForEachLink(m_dataSet, SectionUse::DataSet, hasFrames ? "Ch#-Fr#" : "Gr#-Ch#",
                [&](const HeaderLine& line, KeyIndices indices) {
                    if (hasFrames)
                        std::swap(indices.first, indices.second);
                    const std::uint32_t section = m_lines.FindSection(m_lines.Value(line));
                    const bool isNew = Mark(section, SectionUse::Channel);
                    m_channels.push_back({&line, section, indices.first, indices.second, !isNew});
                });
}

void CSectionUses::FollowFlatInfo()
{
    const std::string_view list = m_lines.ValueOf(m_dataSet, "SetInfos");
    const std::uint32_t section = m_lines.FindSection(list.empty() && m_version == 1 ? "SetInfos" : list);
    if (!list.empty() || m_version == 1)
        Mark(section, SectionUse::FlatInfo);
    if (!list.empty() && section == noSection)
        m_infos.push_back({m_lines.FindKey(m_dataSet, "SetInfos"), noSection, 0, 0});
}

// Sections are named by the path to them: what is waiting are their paths.
void CSectionUses::FollowInfoTree()
{
    std::vector<std::uint32_t> waiting;
    const auto follow = [&](std::uint32_t parent, SectionUse use, std::string_view pattern) {
        ForEachLink(parent, use, pattern, [&](const HeaderLine& line, KeyIndices) {
            const std::string path = std::string(m_lines.SectionName(parent)).append("\\").append(m_lines.Value(line));
            const std::uint32_t section = m_lines.FindSection(path);
            const bool isNew = Mark(section, SectionUse::InfoGroup);
            if (isNew)
                waiting.push_back(section);
            else
                m_infos.push_back({&line, section, 0, 0, section != noSection});
        });
    };
    follow(m_dataSet, SectionUse::DataSet, "InfoSet#");
    while (!waiting.empty()) {
        const std::uint32_t next = waiting.back();
        waiting.pop_back();
        follow(next, SectionUse::InfoGroup, "SubSection#");
    }
}

void CSectionUses::FollowViews()
{
    const std::uint32_t list = m_lines.FindSection(viewListName);
    Mark(list, SectionUse::ViewList);
    ForEachLink(list, SectionUse::ViewList, "View#", [&](const HeaderLine& line, KeyIndices) {
        const std::uint32_t section = m_lines.FindSection(m_lines.Value(line));
        Mark(section, SectionUse::View);
        m_entries.push_back({&line, section, 0, 0});
    });
}

// Parameters are in sections that are named by kind and number, not by a link.
void CSectionUses::FollowProcessors()
{
    const std::uint32_t list = m_lines.FindSection(processorListName);
    Mark(list, SectionUse::ProcessorList);
    ForEachLink(list, SectionUse::ProcessorList, "Processor#", [&](const HeaderLine& line, KeyIndices) {
        const std::uint32_t section = m_lines.FindSection(m_lines.Value(line));
        Mark(section, SectionUse::ProcessorEntry);
        m_entries.push_back({&line, section, 0, 0});
    });
    for (std::uint32_t section = 0; section < m_lines.SectionCount(); ++section) {
        const std::string_view name = m_lines.SectionName(section);
        if (velstdlib::string::EqualFolded(name.substr(0, processorPrefix.size()), processorPrefix))
            Mark(section, SectionUse::Processor);
    }
}

} // namespace veltaris::inspect
