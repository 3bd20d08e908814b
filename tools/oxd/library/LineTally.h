// Counts the lines of a channel with which something is wrong, to tell of them in one sentence.
#pragma once

#include <cstdint>
#include <string>

namespace oxd {

class LineTally
{
public:
    void Add(std::uint64_t line, const std::string& reason)
    {
        if (m_count++ == 0) {
            m_first = "line " + std::to_string(line) + ": " + reason;
        }
    }

    std::uint64_t Count() const { return m_count; }

    // `outcome` says what became of the lines, for example "cannot be read".
    std::string Sentence(const std::string& outcome) const
    {
        return std::to_string(m_count) + (m_count == 1 ? " line " : " lines ") + outcome + ", the first is " + m_first;
    }

private:
    std::uint64_t m_count = 0;
    std::string m_first;
};

} // namespace oxd
