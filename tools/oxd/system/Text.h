// Texts for a terminal. Numbers look the same in every locale.
#pragma once

#include <cstddef>
#include <initializer_list>
#include <string>
#include <vector>

namespace oxd {

// Up to six significant digits, as many as a file keeps of an axis.
std::string ToText(double number);

// As few digits as tell the number from any other.
std::string ToExactText(double number);

// `text` with its control characters replaced, so that what a file holds cannot command the terminal.
std::string Printable(const std::string& text);

// `text` itself if it is UTF-8, else with every byte beyond ASCII replaced.
std::string ValidUtf8(const std::string& text);

// Columns as wide as their widest cell.
class Table
{
public:
    Table() = default;
    explicit Table(std::vector<std::string> headings) { Add(std::move(headings)); }

    void Add(std::vector<std::string> cells);
    std::string Render(const std::string& indent) const;

private:
    std::vector<std::vector<std::string>> m_rows;
    std::vector<std::size_t> m_widths;
};

} // namespace oxd
