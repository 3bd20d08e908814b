// Which lines of a channel a picture of curves shows.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace oxd {

// Both ends are among the lines.
struct LineSpan
{
    std::uint64_t first, last;
};

// Lines as on the command line, such as 3,7-9. Throws a Failure for any other text.
std::vector<LineSpan> ParseLines(std::string_view text);

// The numbers of the lines of a channel with `count` lines, in the order of the spans; all of them if there are no
// spans. Throws a Failure if a span goes beyond the lines.
std::vector<std::uint64_t> ChooseLines(const std::vector<LineSpan>& spans, std::uint64_t count);

} // namespace oxd
