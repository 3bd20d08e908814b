#include "oxd/compare/OtherContent.h"

#include "inspect/header/HeaderLines.h"
#include "inspect/header/SectionUses.h"

#include <algorithm>

namespace oxd {

namespace {

class OtherKeys
{
public:
    OtherKeys(const inspect::CHeaderLines& lines, const inspect::CSectionUses& uses) : m_lines(lines), m_uses(uses) {}

    bool IsInformation(std::uint32_t section) const { return IsAny(section, Use::FlatInfo, Use::InfoGroup); }
    bool IsDropped(std::uint32_t section) const
    {
        return !IsInformation(section) && !IsAny(section, Use::DataSet, Use::Channel);
    }

    KeyValues Of(std::uint32_t section) const
    {
        KeyValues others;
        for (const std::uint32_t position : m_lines.LinesOf(section)) {
            const inspect::HeaderLine& line = m_lines.Lines()[position];
            const bool isInForce = !line.isReplaced && line.kind == inspect::HeaderLine::Kind::Key;
            if (isInForce && !IsKept(line, Use::DataSet) && !IsKept(line, Use::Channel)) {
                others.emplace(m_lines.Key(line), m_lines.Value(line));
            }
        }
        return others;
    }

private:
    using Use = inspect::SectionUse;

    bool IsAny(std::uint32_t section, Use a, Use b) const { return m_uses.Has(section, a) || m_uses.Has(section, b); }

    // Whether a save writes the value of the key again, or another part of the comparison looks at it.
    bool IsKept(const inspect::HeaderLine& line, Use use) const
    {
        const auto key = inspect::FindKeySpec(use, m_uses.Version(), m_lines.Key(line));
        if (!key || !m_uses.Has(line.section, use) || !m_uses.IsBelowCount(line, *key)) {
            return false;
        }
        const std::string_view pattern = key->spec->pattern;
        const bool isWrittenAnew =
            pattern == "Frame" || pattern == "CurLine" || key->spec->kind == inspect::ValueKind::Storage;
        return !isWrittenAnew || m_lines.Value(line) == key->spec->taken;
    }

    const inspect::CHeaderLines& m_lines;
    const inspect::CSectionUses& m_uses;
};

} // namespace

OtherContent::OtherContent(const inspect::Inspection& inspection)
    : m_bytesLeftOver(inspection.fileBytes -
                      std::min(inspection.fileBytes, inspection.headerBytes + inspection.claimedBytes))
{
    const inspect::CHeaderLines lines(inspection.header);
    const inspect::CSectionUses uses(lines);
    const OtherKeys others(lines, uses);
    for (std::uint32_t section = 0; section < lines.SectionCount(); ++section) {
        if (others.IsInformation(section)) {
            continue;
        }
        KeyValues keys = others.Of(section);
        if (uses.Has(section, inspect::SectionUse::Channel)) {
            m_keys.emplace(section, std::move(keys));
        } else if (others.IsDropped(section) || !keys.empty()) {
            m_sections.emplace(lines.SectionName(section), std::move(keys));
        }
    }
    for (const inspect::SectionLink& link : uses.Channels()) {
        m_channels[{link.group, link.slot}] = link.section;
    }
}

const KeyValues& OtherContent::OfChannel(std::uint64_t group, std::uint64_t slot) const
{
    static const KeyValues none;
    const auto section = m_channels.find({group, slot});
    const auto found = section == m_channels.end() ? m_keys.end() : m_keys.find(section->second);
    return found == m_keys.end() ? none : found->second;
}

} // namespace oxd
