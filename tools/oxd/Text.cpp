#include "Text.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace oxd {

namespace {

constexpr int significantDigits = 6;
constexpr const char* columnGap = "  ";

// Characters, of which all bytes but the first are 10xxxxxx in UTF-8.
std::size_t Width(const std::string& text)
{
    return static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](char byte) { return (byte & 0xC0) != 0x80; }));
}

bool IsControl(char byte)
{
    return (byte >= 0 && byte < ' ') || byte == 0x7F;
}

} // namespace

std::string ToText(double number)
{
    std::array<char, 32> buffer{};
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number, std::chars_format::general,
                                   significantDigits);
    return {buffer.data(), end.ptr};
}

std::string Printable(const std::string& text)
{
    std::string printable = text;
    std::replace_if(printable.begin(), printable.end(), IsControl, '?');
    return printable;
}

void Table::Add(std::vector<std::string> cells)
{
    m_widths.resize(std::max(m_widths.size(), cells.size()));
    for (std::size_t column = 0; column < cells.size(); ++column) {
        m_widths[column] = std::max(m_widths[column], Width(cells[column]));
    }
    m_rows.push_back(std::move(cells));
}

std::string Table::Render(const std::string& indent) const
{
    std::string text;
    for (const std::vector<std::string>& row : m_rows) {
        std::string line = indent;
        for (std::size_t column = 0; column < row.size(); ++column) {
            line += row[column] + std::string(m_widths[column] - Width(row[column]), ' ') + columnGap;
        }
        text += line.substr(0, line.find_last_not_of(' ') + 1) + "\n";
    }
    return text;
}

} // namespace oxd
