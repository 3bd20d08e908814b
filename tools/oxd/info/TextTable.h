// A table of texts for a terminal, with columns as wide as their widest cell and two blanks apart.
#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace oxd {

// Rows may differ in length. Widths count the characters of UTF-8; where a cell is anything else, only the alignment
// suffers. Cells must have no line breaks, which Printable sees to.
class TextTable
{
public:
    TextTable() = default;
    explicit TextTable(std::vector<std::string> headings) { Add(std::move(headings)); }

    void Add(std::vector<std::string> cells);

    // One line for each row, in the order in which they were added. Each begins with `indent` and has no blanks at its
    // end.
    std::string Render(const std::string& indent) const;

private:
    std::vector<std::vector<std::string>> m_rows;
    std::vector<std::size_t> m_widths; // in characters, of the widest cell in each column so far
};

} // namespace oxd
