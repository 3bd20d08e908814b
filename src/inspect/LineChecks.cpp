#include "inspect/HeaderChecks.h"

namespace veltaris::inspect {

namespace {

void CheckEncoding(const CHeaderLines& lines, CFindingList& findings)
{
    if (lines.IsDamagedUtf8())
        findings.AddPlace(RuleId::DamagedUtf8, lines.FirstUndecodable(), {},
                          {"a code page", "A byte of the header is damaged: it is not UTF-8, so that all characters "
                                          "beyond ASCII are taken for those of a code page."});
    else if (lines.GetEncoding() == CHeaderLines::Encoding::CodePage)
        findings.AddPlace(RuleId::NotUtf8, lines.FirstUndecodable(), {},
                          {"a code page", "The header is not UTF-8 from here on, so it is taken for a code page."});
    if (lines.GetEncoding() == CHeaderLines::Encoding::MarkedUtf8)
        findings.AddPlace(RuleId::ByteOrderMark, 0, "\xEF\xBB\xBF",
                          {"nothing", "The header begins with a byte-order mark, which is skipped."});
}

void CheckSectionHead(const CHeaderLines& lines, const HeaderLine& line, CFindingList& findings)
{
    if (!line.repeats)
        return;
    const std::string name = Quoted(lines.SectionName(line.section));
    const std::string first = std::to_string(lines.SectionHead(line.section).number);
    findings.AddLine(
        RuleId::SectionRepeated, line,
        {"one section", "The section " + name + " appears again; the first one is in line " + first + "."});
}

void CheckIgnored(const CHeaderLines& lines, const HeaderLine& line, CFindingList& findings)
{
    const std::string text = Quoted(lines.Text(line));
    if (line.section == noSection)
        findings.AddLine(RuleId::LineOutsideSection, line, {"nothing", text + " appears before the first section."});
    else
        findings.AddLine(RuleId::NeitherSectionNorKey, line,
                         {"nothing", text + " is neither a section nor a key with a value."});
}

// Null unless it is a line of a channel's axis.
const KeySpec* AxisSpecOf(const CHeaderLines& lines, const CSectionUses& uses, const HeaderLine& line)
{
    const auto key = uses.Has(line.section, SectionUse::Channel)
                         ? FindKeySpec(SectionUse::Channel, uses.Version(), lines.Key(line))
                         : std::nullopt;
    return key && IsOfAxis(*key->spec) ? key->spec : nullptr;
}

void CheckRepeated(const CHeaderLines& lines, const CSectionUses& uses, const HeaderLine& line, CFindingList& findings)
{
    const HeaderLine* const counting = lines.FindKey(line.section, lines.Key(line));
    const std::string_view value = counting ? lines.Value(*counting) : std::string_view();
    findings.AddLine(AxisSpecOf(lines, uses, line) ? RuleId::AxisKeyRepeated : RuleId::KeyRepeated, line,
                     {std::string(value), Quoted(lines.Key(line)) + " appears again in section " +
                                              Quoted(lines.SectionName(line.section)) + "; " +
                                              (counting ? Quoted(value) + " counts." : "it counts as missing.")});
}

void CheckKeyLine(const CHeaderLines& lines, const CSectionUses& uses, const HeaderLine& line, CFindingList& findings)
{
    if (line.repeats)
        return CheckRepeated(lines, uses, line, findings);
    if (line.kind != HeaderLine::Kind::Removal)
        return;
    const KeySpec* const axis = AxisSpecOf(lines, uses, line);
    if (!axis || !axis->pattern.starts_with("Dim") || axis->pattern.ends_with("Name"))
        findings.AddLine(RuleId::KeyWithoutValue, line,
                         {"nothing", Quoted(lines.Key(line)) + " in section " +
                                         Quoted(lines.SectionName(line.section)) +
                                         " has no value and counts as missing."});
}

} // namespace

void CheckLines(const CHeaderLines& lines, const CSectionUses& uses, CFindingList& findings)
{
    CheckEncoding(lines, findings);
    for (const HeaderLine& line : lines.Lines()) {
        if (line.kind == HeaderLine::Kind::Section)
            CheckSectionHead(lines, line, findings);
        else if (line.section == noSection || line.kind == HeaderLine::Kind::Other)
            CheckIgnored(lines, line, findings);
        else
            CheckKeyLine(lines, uses, line, findings);
    }
    if (const auto& unended = lines.Unended())
        findings.AddLine(RuleId::LastLineDropped, *unended,
                         {"nothing", Quoted(lines.Text(*unended)) + " has no line end before the end of the header."});
}

} // namespace veltaris::inspect
