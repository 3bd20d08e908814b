// Which lines of a channel were written.
#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

namespace veltaris::velflexlib::dataset {

// The states of all lines. While the written ones are the first ones, as in every new and every loaded channel, they
// are a number; after that one bit a line.
// Not thread-safe: guarded by the lock of the CDataBuffer that owns it.
class CLineStates
{
public:
    static constexpr std::uint32_t neverWritten = 0;
    static constexpr std::uint32_t writtenWhole = 3;

    // The first `writtenLines` are written whole and the others never.
    void Reset(std::uint64_t lines, std::uint64_t writtenLines)
    {
        m_lines = lines;
        m_writtenLines = writtenLines;
        m_written = {};
    }

    std::uint32_t Get(std::uint64_t line) const
    {
        const bool isWritten = m_written.empty() ? line < m_writtenLines : m_written[line];
        return isWritten ? writtenWhole : neverWritten;
    }

    // Takes the memory that marking the line needs: this may throw, MarkWritten does not.
    void PrepareToMark(std::uint64_t line)
    {
        if (!m_written.empty() || line < m_writtenLines)
            return;
        std::vector<bool> written(m_lines);
        std::fill_n(written.begin(), m_writtenLines, true);
        m_written.swap(written);
    }

    void MarkWritten(std::uint64_t line)
    {
        if (!m_written.empty())
            m_written[line] = true;
    }

private:
    std::uint64_t m_lines = 0;
    std::uint64_t m_writtenLines = 0;
    std::vector<bool> m_written;
};

} // namespace veltaris::velflexlib::dataset
