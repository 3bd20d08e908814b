#include "oxd/inspection/CarriedSections.h"

#include "inspect/HeaderChecks.h"
#include "inspect/header/HeaderLines.h"
#include "inspect/header/SectionUses.h"
#include "velstdlib/string/Encoding.h"
#include "velstdlib/string/FoldedText.h"
#include "velstdlib/util/header/HeaderText.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

namespace oxd {

namespace inspect = veltaris::inspect;

namespace {

using inspect::CHeaderLines;
using inspect::CSectionUses;
using inspect::HeaderLine;
using inspect::SectionUse;
using veltaris::velstdlib::string::EqualFolded;

bool BeginsWith(std::string_view name, std::string_view prefix)
{
    return EqualFolded(name.substr(0, prefix.size()), prefix);
}

// Of sections that a save makes itself.
bool IsNameOfWritten(std::string_view name)
{
    return EqualFolded(name, inspect::dataSetName) || BeginsWith(name, "DataSet-") || BeginsWith(name, "DataSet\\");
}

bool IsCarried(const CHeaderLines& lines, const CSectionUses& uses, std::uint32_t section)
{
    constexpr std::array written{SectionUse::DataSet, SectionUse::Channel, SectionUse::FlatInfo, SectionUse::InfoGroup};
    const std::string_view name = lines.SectionName(section);
    if (IsNameOfWritten(name) || std::ranges::any_of(written, [&](SectionUse use) { return uses.Has(section, use); })) {
        return false;
    }
    const bool wouldBecomeProcessor = uses.Version() == 1 && BeginsWith(name, inspect::processorListName);
    return !wouldBecomeProcessor && (uses.IsUsed(section) || !inspect::LooksLikeChannel(lines, section));
}

// As offsets of lines are those of bytes in UTF-8.
std::string InUtf8(std::string bytes)
{
    std::string text;
    veltaris::velstdlib::string::AppendAnalyzed(text, std::move(bytes));
    return text;
}

// Where the last line of a header ends: the empty line that a written end mark follows is none of it.
std::size_t EndOfLines(std::string_view header)
{
    header.remove_suffix(veltaris::velstdlib::util::headerEndMark.size());
    const std::size_t end = header.rfind('\n') + 1;
    for (const std::string_view emptyLine : {"\n\r\n", "\n\n"}) {
        if (header.substr(0, end).ends_with(emptyLine)) {
            return end - emptyLine.size() + 1;
        }
    }
    return end;
}

} // namespace

CarriedSections::CarriedSections(std::string header)
{
    const std::string text = InUtf8(std::move(header));
    const CHeaderLines lines(text);
    const CSectionUses uses(lines);
    const HeaderLine end{static_cast<std::uint32_t>(EndOfLines(text)), ~std::uint32_t{0}};
    const HeaderLine* head = nullptr; // of the section that is being passed, if it is carried
    const auto finish = [&](const HeaderLine& next) {
        if (head != nullptr) {
            m_text.append(text, head->offset, next.offset - head->offset);
            m_lines.push_back({head->number, next.number});
        }
    };
    for (const HeaderLine& line : lines.Lines()) {
        if (line.kind == HeaderLine::Kind::Section) {
            finish(line);
            head = IsCarried(lines, uses, line.section) ? &line : nullptr;
        }
    }
    finish(lines.Unended() ? HeaderLine{end.offset, lines.Unended()->number} : end);
}

bool CarriedSections::HasLine(std::uint64_t line) const
{
    const auto behind = std::ranges::upper_bound(m_lines, line, {}, &Lines::first);
    return behind != m_lines.begin() && line < std::prev(behind)->end;
}

} // namespace oxd
