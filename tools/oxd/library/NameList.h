// Lists what a file has for somebody who asked for something else.
#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace oxd {

// Shows the first few names, since a file may have a million, and how each of them can be asked for without its name.
class NameList
{
public:
    explicit NameList(std::string none) : m_none(std::move(none)) {}

    void Add(const std::string& name, const std::string& otherwise);

    // For example: it has "Topography" (0), "Phase" (1) and 3 more. If nothing was added, the sentence for none.
    std::string Sentence() const;

private:
    std::string m_none;
    std::vector<std::string> m_shown;
    std::size_t m_count = 0;
};

} // namespace oxd
