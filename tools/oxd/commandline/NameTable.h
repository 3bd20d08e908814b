// Tables of names that an option takes, each row with a `name` and a `description`.
#pragma once

#include <CLI/CLI.hpp>

#include <iterator>
#include <string>
#include <string_view>
#include <vector>

namespace oxd {

// A line for each row below the title, with the descriptions in one column behind `width` characters.
template <class Table>
std::string DescribeNames(std::string_view title, const Table& table, std::size_t width)
{
    std::string text(title);
    for (const auto& row : table) {
        text.append("\n  ").append(row.name).append(width - row.name.size(), ' ').append(row.description);
    }
    return text;
}

template <class Table>
CLI::Validator IsNameOf(const Table& table)
{
    std::vector<std::string> names;
    names.reserve(std::size(table));
    for (const auto& row : table) {
        names.emplace_back(row.name);
    }
    return CLI::IsMember(names);
}

} // namespace oxd
