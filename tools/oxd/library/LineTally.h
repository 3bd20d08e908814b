// Counts the lines of a channel with which something is wrong, so that one sentence tells of all of them: a damaged
// file may have thousands.
#pragma once

#include <cstdint>
#include <string>

namespace oxd {

// Keeps the reason of the line that was added first.
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

    // `outcome` says what became of the lines, for example "cannot be read". At least one line must have been added.
    std::string Sentence(const std::string& outcome) const
    {
        return std::to_string(m_count) + (m_count == 1 ? " line " : " lines ") + outcome + ", the first is " + m_first;
    }

private:
    std::uint64_t m_count = 0;
    std::string m_first;
};

// The lines that gave nothing when they were read through a line operator. A damaged line makes the whole command end
// with an error; one that is too short does not, because it belongs to a sound file.
struct SkippedLines
{
    void AddTooShort(std::uint64_t line) { tooShort.Add(line, "too few samples for this operator"); }

    LineTally tooShort;
    LineTally damaged;
};

} // namespace oxd
