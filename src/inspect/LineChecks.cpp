#include "inspect/HeaderChecks.h"

namespace veltaris::inspect {

namespace {

void CheckEncoding(const CHeaderLines& lines, CFindingList& findings)
{
    if (lines.GetEncoding() == CHeaderLines::Encoding::CodePage)
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
        {"one section", "The section " + name + " begins a second time; the first is in line " + first + "."});
}

void CheckIgnored(const CHeaderLines& lines, const HeaderLine& line, CFindingList& findings)
{
    const std::string text = Quoted(lines.Text(line));
    if (line.section == noSection)
        findings.AddLine(RuleId::LineOutsideSection, line, {"nothing", text + " stands ahead of the first section."});
    else
        findings.AddLine(RuleId::NeitherSectionNorKey, line,
                         {"nothing", text + " is neither a section nor a key with a value."});
}

void CheckKeyLine(const CHeaderLines& lines, const HeaderLine& line, CFindingList& findings)
{
    const std::string key = Quoted(lines.Key(line)), section = Quoted(lines.SectionName(line.section));
    const HeaderLine* const counting = lines.FindKey(line.section, lines.Key(line));
    const std::string_view value = counting ? lines.Value(*counting) : std::string_view();
    if (line.repeats)
        findings.AddLine(RuleId::KeyRepeated, line,
                         {std::string(value), key + " stands a second time in section " + section + "; " +
                                                  (counting ? Quoted(value) + " counts." : "it counts as missing.")});
    if (line.kind == HeaderLine::Kind::Removal && !line.repeats)
        findings.AddLine(RuleId::KeyWithoutValue, line,
                         {"nothing", key + " in section " + section + " has no value and counts as missing."});
}

} // namespace

void CheckLines(const CHeaderLines& lines, CFindingList& findings)
{
    CheckEncoding(lines, findings);
    for (const HeaderLine& line : lines.Lines()) {
        if (line.kind == HeaderLine::Kind::Section)
            CheckSectionHead(lines, line, findings);
        else if (line.section == noSection || line.kind == HeaderLine::Kind::Other)
            CheckIgnored(lines, line, findings);
        else
            CheckKeyLine(lines, line, findings);
    }
    if (const auto& unended = lines.Unended())
        findings.AddLine(RuleId::LastLineDropped, *unended,
                         {"nothing", Quoted(lines.Text(*unended)) + " has no line end before the end of the header."});
}

} // namespace veltaris::inspect
