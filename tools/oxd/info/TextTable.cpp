#include "oxd/info/TextTable.h"

#include "oxd/system/Text.h"

#include <algorithm>

namespace oxd {

void TextTable::Add(std::vector<std::string> cells)
{
    m_widths.resize(std::max(m_widths.size(), cells.size()));
    for (std::size_t column = 0; column < cells.size(); ++column) {
        m_widths[column] = std::max(m_widths[column], CharacterCount(cells[column]));
    }
    m_rows.push_back(std::move(cells));
}

std::string TextTable::Render(const std::string& indent) const
{
    std::string text;
    for (const std::vector<std::string>& row : m_rows) {
        std::string line = indent;
        for (std::size_t column = 0; column < row.size(); ++column) {
            line += row[column] + std::string(m_widths[column] - CharacterCount(row[column]), ' ') + "  ";
        }
        text += line.substr(0, line.find_last_not_of(' ') + 1) + "\n";
    }
    return text;
}

} // namespace oxd
