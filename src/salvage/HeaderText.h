// Where the text of a header ends, also where its end mark is damaged or lost.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace veltaris::salvage {

// The end mark as it is written: behind an empty line.
inline constexpr std::string_view endOfHeader = "\r\n#!";

// Whether the end mark that the header ends with stands on a line of its own.
bool EndsOnOwnLine(std::string_view header);

// Whether it is the one that was written, and not two bytes of the samples or of a text that damage has made one: it
// follows an empty line, and nothing before it looks like a damaged mark.
bool EndsAsWritten(std::string_view header);

// The lines of a header whose end mark cannot be relied on.
struct HeaderPart
{
    std::string text;      // whole lines
    bool isWhole = false;  // a damaged mark follows them
    std::uint64_t end = 0; // of the empty line before that mark, if there is one
};

// From the first bytes of a file, up to what is no text any more.
HeaderPart FindHeaderPart(std::string_view bytes);

} // namespace veltaris::salvage
