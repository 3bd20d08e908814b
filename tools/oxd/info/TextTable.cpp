#include "oxd/info/TextTable.h"

#include <algorithm>

namespace oxd {

namespace {

// The number of characters: in UTF-8, all bytes of one but the first are 10xxxxxx.
std::size_t Width(const std::string& text)
{
    return static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](char byte) { return (byte & 0xC0) != 0x80; }));
}

} // namespace

void TextTable::Add(std::vector<std::string> cells)
{
    m_widths.resize(std::max(m_widths.size(), cells.size()));
    for (std::size_t column = 0; column < cells.size(); ++column) {
        m_widths[column] = std::max(m_widths[column], Width(cells[column]));
    }
    m_rows.push_back(std::move(cells));
}

std::string TextTable::Render(const std::string& indent) const
{
    std::string text;
    for (const std::vector<std::string>& row : m_rows) {
        std::string line = indent;
        for (std::size_t column = 0; column < row.size(); ++column) {
            line += row[column] + std::string(m_widths[column] - Width(row[column]), ' ') + "  ";
        }
        text += line.substr(0, line.find_last_not_of(' ') + 1) + "\n";
    }
    return text;
}

} // namespace oxd
