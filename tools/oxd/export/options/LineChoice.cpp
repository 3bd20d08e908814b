#include "oxd/export/options/LineChoice.h"

#include "oxd/system/Failure.h"

#include <algorithm>
#include <charconv>
#include <numeric>
#include <string>

namespace oxd {

namespace {

std::uint64_t ParseLine(std::string_view number, std::string_view whole)
{
    std::uint64_t line = 0;
    const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), line);
    if (error != std::errc() || end != number.data() + number.size()) {
        throw Failure(ExitCode::Usage, "lines \"" + std::string(whole) + "\"",
                      "are no numbers of lines, such as 3,7-9");
    }
    return line;
}

LineSpan ParseSpan(std::string_view span, std::string_view whole)
{
    const std::size_t dash = std::min(span.find('-'), span.size());
    const std::uint64_t first = ParseLine(span.substr(0, dash), whole);
    const std::uint64_t last = dash == span.size() ? first : ParseLine(span.substr(dash + 1), whole);
    return {std::min(first, last), std::max(first, last)};
}

} // namespace

std::vector<LineSpan> ParseLines(std::string_view text)
{
    std::vector<LineSpan> spans;
    for (std::size_t begin = 0; begin <= text.size();) {
        const std::size_t end = std::min(text.find(',', begin), text.size());
        spans.push_back(ParseSpan(text.substr(begin, end - begin), text));
        begin = end + 1;
    }
    return spans;
}

std::vector<std::uint64_t> ChooseLines(const std::vector<LineSpan>& spans, std::uint64_t count)
{
    std::vector<std::uint64_t> lines;
    for (const LineSpan& span : spans) {
        if (span.last >= count) {
            throw Failure(ExitCode::Usage, "line " + std::to_string(span.last),
                          count == 0 ? "the channel has no lines"
                                     : "the lines of the channel are 0 to " + std::to_string(count - 1));
        }
        for (std::uint64_t line = span.first; line <= span.last; ++line) {
            lines.push_back(line);
        }
    }
    if (spans.empty()) {
        lines.resize(count);
        std::iota(lines.begin(), lines.end(), std::uint64_t{0});
    }
    return lines;
}

} // namespace oxd
