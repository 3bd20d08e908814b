// What `oxd validate` tells of a file.
#pragma once

#include "oxd/inspection/InspectFile.h"

#include <cstddef>
#include <string>

namespace oxd {

struct SeverityCounts
{
    std::size_t errors = 0;
    std::size_t warnings = 0;
    std::size_t notes = 0;
};

SeverityCounts CountFindings(const inspect::Inspection& inspection);

// A line for each finding, "FILE:LINE: error: ...", as compilers write them, and a last one that counts them. Where
// there is no line of the header, the byte of the file stands instead.
std::string ToText(const inspect::Inspection& inspection);

// A JSON document of the shape that docs/schema/validate.schema.json describes. It ends with a line feed.
std::string ToJson(const inspect::Inspection& inspection, bool inOneLine);

} // namespace oxd
