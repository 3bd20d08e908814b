#include "inspect/HeaderChecks.h"
#include "inspect/ValueCheck.h"

#include <algorithm>
#include <array>
#include <map>
#include <utility>
#include <vector>

namespace veltaris::inspect {

namespace {

constexpr std::array allUses{SectionUse::DataSet,        SectionUse::Channel,  SectionUse::InfoGroup,
                             SectionUse::ViewList,       SectionUse::View,     SectionUse::ProcessorList,
                             SectionUse::ProcessorEntry, SectionUse::Processor};

// Checks the keys of one section for one of its uses.
class CKeyChecker
{
public:
    CKeyChecker(const CHeaderLines& lines, const CSectionUses& uses, CFindingList& findings, std::uint32_t section,
                SectionUse use)
        : m_lines(lines), m_uses(uses), m_findings(findings), m_section(section), m_use(use),
          m_isPrefixed(use == SectionUse::Channel && lines.IntOf(section, "Version", 1) <= 1)
    {
    }

    void Check()
    {
        for (const std::uint32_t position : m_lines.LinesOf(m_section)) {
            const HeaderLine& line = m_lines.Lines()[position];
            if (line.isReplaced || line.kind != HeaderLine::Kind::Key)
                continue;
            if (const auto key = FindKeySpec(m_use, m_uses.Version(), m_lines.Key(line)))
                CheckKnown(line, *key);
            else
                CheckUnknown(line);
        }
        for (const KeySpec& spec : AllKeySpecs()) {
            const bool applies = spec.version == 0 || spec.version == m_uses.Version();
            if (spec.use == m_use && applies && spec.isListed)
                CheckCount(spec, m_entries[&spec]);
        }
        CheckSlotCounts();
    }

private:
    std::string Place(const HeaderLine& line) const
    {
        return Quoted(m_lines.Key(line)) + " in section " + Quoted(m_lines.SectionName(m_section));
    }

    void CheckKnown(const HeaderLine& line, const KnownKey& key)
    {
        const KeySpec& spec = *key.spec;
        if (!m_uses.IsBelowCount(line, key)) {
            const bool becomesItem = m_use == SectionUse::InfoGroup;
            return m_findings.AddLine(RuleId::KeyBeyondCount, line,
                                      {becomesItem ? "an item of information" : "nothing",
                                       Place(line) + " is beyond the count of its list, and not used as part of it."});
        }
        if (spec.isListed)
            ++m_entries[&spec];
        if (spec.pattern == "Gr#-Count")
            m_slotCounts.emplace_back(&line, key.indices.first);
        if (spec.pattern == "Gr#-Ch#")
            m_usedSlots[key.indices.first] = std::max(m_usedSlots[key.indices.first], key.indices.second + 1);
        if (const auto fault = CheckValue(spec, m_lines.Value(line), m_isPrefixed))
            m_findings.AddLine(fault->rule, line,
                               {fault->taken, Place(line) + " is " + Quoted(m_lines.Value(line)) + ", which " +
                                                  fault->reason + "; " + fault->taken + " is used instead."});
    }

    void CheckUnknown(const HeaderLine& line)
    {
        if ((m_use == SectionUse::DataSet || m_use == SectionUse::Channel) &&
            !m_uses.Has(m_section, SectionUse::FlatInfo))
            m_findings.AddLine(RuleId::KeyDropped, line,
                               {"nothing", Place(line) + " is not a key that the library knows."});
    }

    void CheckCount(const KeySpec& spec, std::uint64_t entries)
    {
        const HeaderLine* const line = m_lines.FindKey(m_section, spec.countKey);
        const int count = m_lines.IntOf(m_section, spec.countKey, 0);
        if (line && count > 0 && std::cmp_greater(count, entries))
            m_findings.AddLine(RuleId::CountTooLarge, *line,
                               {std::to_string(count), Place(*line) + " is " + std::to_string(count) +
                                                           ", and there are keys for " + std::to_string(entries) +
                                                           "."});
    }

    // Slots may be empty. Empty ones behind the last channel may also be what a damaged count makes.
    void CheckSlotCounts()
    {
        for (const auto& [line, group] : m_slotCounts) {
            const int count = m_lines.IntOf(m_section, m_lines.Key(*line), 0);
            const std::uint64_t used = m_usedSlots[group];
            if (count > 0 && std::cmp_greater(count, used))
                m_findings.AddLine(RuleId::CountTooLarge, *line,
                                   {std::to_string(count), Place(*line) + " is " + std::to_string(count) +
                                                               ", and the slots from " + std::to_string(used) +
                                                               " on have no channel."});
        }
    }

    const CHeaderLines& m_lines;
    const CSectionUses& m_uses;
    CFindingList& m_findings;
    std::uint32_t m_section;
    SectionUse m_use;
    bool m_isPrefixed;
    std::map<const KeySpec*, std::uint64_t> m_entries;                     // of each list, the keys below its count
    std::vector<std::pair<const HeaderLine*, std::uint64_t>> m_slotCounts; // and their groups
    std::map<std::uint64_t, std::uint64_t> m_usedSlots; // by group, up to the last that has a channel
};

} // namespace

void CheckKeys(const CHeaderLines& lines, const CSectionUses& uses, CFindingList& findings)
{
    for (std::uint32_t section = 0; section < lines.SectionCount(); ++section) {
        for (const SectionUse use : allUses) {
            if (uses.Has(section, use))
                CKeyChecker(lines, uses, findings, section, use).Check();
        }
    }
}

} // namespace veltaris::inspect
