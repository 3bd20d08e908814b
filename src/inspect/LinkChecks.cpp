#include "inspect/HeaderChecks.h"

#include "velflexlib/dataset/serialisers/DataSetSection.h"
#include "velstdlib/string/FoldedText.h"

#include <algorithm>

namespace veltaris::inspect {

using velstdlib::string::EqualFolded;

namespace {

std::string NamedSection(const CHeaderLines& lines, const SectionLink& link)
{
    return Quoted(lines.Key(*link.line)) + " names the section " + Quoted(lines.Value(*link.line));
}

// Written files name sections of channels by group and slot; others may name them as they like.
bool NamesOtherSlot(const CHeaderLines& lines, const SectionLink& link)
{
    const auto named = MatchKey(lines.Value(*link.line), "DataSet-#:#");
    return named && (named->first != link.group || named->second != link.slot);
}

void CheckChannelLink(const CHeaderLines& lines, int version, const SectionLink& link, CFindingList& findings)
{
    const std::string text = NamedSection(lines, link);
    if (link.section == noSection)
        findings.AddLine(RuleId::ChannelSectionMissing, *link.line,
                         {"a channel without samples", text + ", which is not there."});
    else if (link.isRepeated)
        findings.AddLine(RuleId::ChannelSectionShared, *link.line,
                         {"a channel of its own", text + ", which another slot names, too."});
    else if (version != velflexlib::dataset::framesVersion && NamesOtherSlot(lines, link))
        findings.AddLine(RuleId::ChannelMisplaced, *link.line,
                         {"group " + std::to_string(link.group) + ", slot " + std::to_string(link.slot),
                          text + ", which is that of another slot."});
}

// A processor needs an identifier and a number.
void CheckEntry(const CHeaderLines& lines, const CSectionUses& uses, const SectionLink& link, CFindingList& findings)
{
    if (link.section == noSection)
        return findings.AddLine(RuleId::EntrySkipped, *link.line,
                                {"the defaults, or nothing", NamedSection(lines, link) + ", which is not there."});
    const bool isWhole = lines.FindKey(link.section, "GUID") && lines.FindKey(link.section, "InstanceNo");
    if (uses.Has(link.line->section, SectionUse::ProcessorList) && !isWhole)
        findings.AddLine(RuleId::EntrySkipped, *link.line,
                         {"nothing", NamedSection(lines, link) + ", which lacks what makes it a processor."});
}

bool IsNamedAsInfo(std::string_view name)
{
    constexpr std::string_view prefix = "DataSet\\";
    return EqualFolded(name.substr(0, prefix.size()), prefix);
}

void CheckUnused(const CHeaderLines& lines, std::uint32_t section, CFindingList& findings)
{
    const std::string name = "The section " + Quoted(lines.SectionName(section));
    if (LooksLikeChannel(lines, section))
        findings.AddSection(RuleId::ChannelNotListed, section,
                            {"nothing", name + " looks like that of a channel, and no slot names it."});
    else if (IsNamedAsInfo(lines.SectionName(section)))
        findings.AddSection(RuleId::InfoNotLinked, section,
                            {"nothing", name + " holds information that nothing links."});
    else
        findings.AddSection(RuleId::SectionDropped, section,
                            {"nothing", name + " is not known, and a save does not write it."});
}

void CheckDropped(const CHeaderLines& lines, const CSectionUses& uses, std::uint32_t section, CFindingList& findings)
{
    if (uses.Has(section, SectionUse::Channel))
        return; // a save writes it, whatever else names it
    const auto isAny = [&](SectionUse a, SectionUse b) { return uses.Has(section, a) || uses.Has(section, b); };
    const std::string name = "The section " + Quoted(lines.SectionName(section));
    if (isAny(SectionUse::ViewList, SectionUse::View))
        findings.AddSection(RuleId::ViewsDropped, section,
                            {"a view", name + " of views is not written by a save of the library."});
    else if (isAny(SectionUse::ProcessorList, SectionUse::ProcessorEntry) || uses.Has(section, SectionUse::Processor))
        findings.AddSection(RuleId::ProcessorsDropped, section,
                            {"a processor", name + " of processors is not written by a save of the library."});
}

} // namespace

// Information may have items such as Points and Lines, too.
bool LooksLikeChannel(const CHeaderLines& lines, std::uint32_t section)
{
    bool hasSize = false, hasOther = false;
    for (const std::uint32_t position : lines.LinesOf(section)) {
        const std::string_view key = lines.Key(lines.Lines()[position]);
        const bool isSize = EqualFolded(key, "Points") || EqualFolded(key, "Lines");
        hasSize = hasSize || isSize;
        hasOther = hasOther || EqualFolded(key, "SaveBits") || MatchKey(key, "Dim#Range") || MatchKey(key, "Dim#Min") ||
                   MatchKey(key, "Dim#Name") || MatchKey(key, "Dim#Unit");
    }
    return (hasSize && hasOther) || MatchKey(lines.SectionName(section), "DataSet-#:#");
}

void CheckLinks(const CHeaderLines& lines, const CSectionUses& uses, CFindingList& findings)
{
    for (const SectionLink& link : uses.Channels())
        CheckChannelLink(lines, uses.Version(), link, findings);
    for (const SectionLink& link : uses.Infos())
        findings.AddLine(
            RuleId::InfoLinkDangling, *link.line,
            {"an empty group", NamedSection(lines, link) +
                                   (link.isRepeated ? ", which another link names, too." : ", which is not there.")});
    for (const SectionLink& link : uses.Entries())
        CheckEntry(lines, uses, link, findings);
    for (std::uint32_t section = 0; section < lines.SectionCount(); ++section) {
        if (uses.IsUsed(section))
            CheckDropped(lines, uses, section, findings);
        else
            CheckUnused(lines, section, findings);
    }
}

} // namespace veltaris::inspect
