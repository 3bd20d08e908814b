#include "salvage/HeaderText.h"

#include "velstdlib/util/header/HeaderText.h"

#include <algorithm>

namespace veltaris::salvage {

using velstdlib::util::headerEndMark;

namespace {

constexpr auto nowhere = std::string_view::npos;

bool IsOfMark(std::string_view text, std::size_t at)
{
    return at < text.size() && headerEndMark.find(text[at]) != nowhere;
}

// Where the line behind an empty line begins, from `from` on.
std::size_t FindAfterEmptyLine(std::string_view text, std::size_t from)
{
    for (auto at = text.find('\n', from); at != nowhere; at = text.find('\n', at + 1)) {
        const std::size_t next = at + 1 + (text.substr(at + 1).starts_with('\r') ? 1 : 0);
        if (next < text.size() && text[next] == '\n')
            return next + 1;
    }
    return nowhere;
}

// Where a line behind an empty line begins that may have been an end mark: one of the two characters is left.
std::size_t FindDamagedMark(std::string_view text)
{
    for (auto at = FindAfterEmptyLine(text, 0); at != nowhere; at = FindAfterEmptyLine(text, at - 1)) {
        if (IsOfMark(text, at) || (at + 1 < text.size() && text[at + 1] == headerEndMark.back()))
            return at;
    }
    return nowhere;
}

bool IsText(char c)
{
    constexpr unsigned char firstPrintable = 0x20;
    return static_cast<unsigned char>(c) >= firstPrintable || c == '\t' || c == '\r' || c == '\n';
}

// A header ends at the first mark, so that no text in it may look like one.
std::string WithoutMarks(std::string text)
{
    for (auto at = text.find(headerEndMark); at != std::string::npos; at = text.find(headerEndMark, at))
        text.insert(at + 1, 1, ' ');
    return text;
}

} // namespace

bool EndsOnOwnLine(std::string_view header)
{
    header.remove_suffix(std::min(header.size(), headerEndMark.size()));
    return header.ends_with('\n');
}

bool EndsAsWritten(std::string_view header)
{
    const std::size_t mark = header.size() - std::min(header.size(), headerEndMark.size());
    return FindDamagedMark(header) == mark && EndsOnOwnLine(header);
}

HeaderPart FindHeaderPart(std::string_view bytes)
{
    const auto firstOther = std::ranges::find_if_not(bytes, IsText);
    const std::string_view text(bytes.begin(), firstOther);
    const auto mark = FindDamagedMark(bytes);
    if (mark != nowhere && mark <= text.size())
        return {WithoutMarks(std::string(bytes.substr(0, mark))), true, mark};
    const auto lastLine = text.rfind('\n');
    return {WithoutMarks(std::string(text.substr(0, lastLine == nowhere ? 0 : lastLine + 1))), false, 0};
}

} // namespace veltaris::salvage
