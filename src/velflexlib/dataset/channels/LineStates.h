// Which lines of a channel were written.
#pragma once

#include <cstdint>
#include <vector>

namespace veltaris::velflexlib::dataset {

// The states of all lines. One bit a line, and none while all lines are alike.
class CLineStates
{
public:
    static constexpr std::uint32_t neverWritten = 0;
    static constexpr std::uint32_t writtenWhole = 3;

    void ResetAll(std::uint64_t lines, std::uint32_t state)
    {
        m_lines = lines;
        m_common = state;
        m_written = {};
    }

    std::uint32_t Get(std::uint64_t line) const
    {
        if (m_written.empty())
            return m_common;
        return m_written[line] ? writtenWhole : neverWritten;
    }

    // Takes the memory that marking the line needs: this may throw, MarkWritten does not.
    void PrepareToMark(std::uint64_t line)
    {
        if (Get(line) != writtenWhole)
            m_written.resize(m_lines);
    }

    void MarkWritten(std::uint64_t line)
    {
        if (!m_written.empty())
            m_written[line] = true;
    }

private:
    std::uint64_t m_lines = 0;
    std::uint32_t m_common = neverWritten;
    std::vector<bool> m_written;
};

} // namespace veltaris::velflexlib::dataset
