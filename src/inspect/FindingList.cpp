#include "inspect/FindingList.h"

#include <algorithm>
#include <utility>

namespace veltaris::inspect {

namespace {

constexpr std::size_t longestText = 200; // in characters
constexpr std::size_t longestQuoted = 60;

constexpr bool BeginsCharacter(char c)
{
    return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U;
}

std::string_view FirstCharacters(std::string_view text, std::size_t most)
{
    std::size_t count = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (BeginsCharacter(text[i]) && count++ == most)
            return text.substr(0, i);
    }
    return text;
}

Finding New(RuleId rule, std::uint64_t offset = 0, std::uint64_t line = 0)
{
    Finding finding;
    finding.rule = &GetRule(rule);
    finding.offset = offset;
    finding.line = line;
    return finding;
}

void Shorten(std::string& text)
{
    text.resize(FirstCharacters(text, longestText).size());
}

} // namespace

std::string Quoted(std::string_view text)
{
    const std::string_view shown = FirstCharacters(text, longestQuoted);
    return std::string("\"").append(shown).append(shown.size() < text.size() ? "...\"" : "\"");
}

void CFindingList::AddLine(RuleId rule, const HeaderLine& line, Remark remark)
{
    Finding finding = New(rule, line.offset, line.number);
    finding.section = m_lines.SectionName(line.section);
    finding.key = m_lines.Key(line);
    finding.found = line.keyLength > 0 ? m_lines.Value(line) : m_lines.Text(line);
    finding.taken = std::move(remark.taken);
    finding.sentence = std::move(remark.sentence);
    Add(std::move(finding));
}

void CFindingList::AddKey(RuleId rule, std::uint32_t section, std::string_view key, Remark remark)
{
    if (const HeaderLine* const line = m_lines.FindKey(section, key))
        return AddLine(rule, *line, std::move(remark));
    Finding finding = New(rule);
    if (section != noSection) {
        finding.offset = m_lines.SectionHead(section).offset;
        finding.line = m_lines.SectionHead(section).number;
        finding.section = m_lines.SectionName(section);
    }
    finding.key = key;
    finding.taken = std::move(remark.taken);
    finding.sentence = std::move(remark.sentence);
    Add(std::move(finding));
}

void CFindingList::AddSection(RuleId rule, std::uint32_t section, Remark remark)
{
    AddKey(rule, section, {}, std::move(remark));
}

void CFindingList::AddPlace(RuleId rule, std::uint64_t offset, std::string_view found, Remark remark)
{
    Finding finding = New(rule, offset);
    finding.found = found;
    finding.taken = std::move(remark.taken);
    finding.sentence = std::move(remark.sentence);
    Add(std::move(finding));
}

void CFindingList::Add(Finding finding)
{
    if (++m_counts[finding.rule->number] > mostPerRule)
        return;
    for (std::string* const text : {&finding.section, &finding.key, &finding.found, &finding.taken})
        Shorten(*text);
    m_findings.push_back(std::move(finding));
}

std::vector<Finding> CFindingList::Take()
{
    std::ranges::stable_sort(m_findings, {}, &Finding::offset);
    for (const auto& [rule, count] : m_counts) {
        if (count <= mostPerRule)
            continue;
        const auto isLast = [number = rule](const Finding& finding) { return finding.rule->number == number; };
        const auto last = std::ranges::find_if(m_findings.rbegin(), m_findings.rend(), isLast);
        Finding more = New(rule, last->offset, last->line);
        more.sentence = std::to_string(count - mostPerRule) + " more of this kind are not listed.";
        m_findings.insert(last.base(), std::move(more));
    }
    return std::move(m_findings);
}

} // namespace veltaris::inspect
