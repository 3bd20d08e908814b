// The sections of a header that the library does not write, but that stay true in an edited file: those of views, of
// processors, and those that it does not know. The tool carries them over into the files that it saves.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace oxd {

// Left out are sections with names that written files use for channels and information, those that look like such,
// those that have a second use there, and in version 1, which has no processors, those that would become some. A plain
// value, which does not change once it is made.
class CarriedSections
{
public:
    CarriedSections() = default; // none
    // Of a header with its end mark, which opens.
    explicit CarriedSections(std::string header);

    // The sections in their order, byte for byte as they stand; in UTF-8 also where the file is not. Ends with a line
    // end unless it is empty.
    const std::string& Text() const { return m_text; }

    // Whether the line of the header, counted from 1, is in one of them.
    bool HasLine(std::uint64_t line) const;

private:
    struct Lines
    {
        std::uint64_t first, end;
    };

    std::string m_text;
    std::vector<Lines> m_lines; // in ascending order
};

} // namespace oxd
