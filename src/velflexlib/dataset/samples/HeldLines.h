// Which lines of a channel have storage, and where in it they stand.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace veltaris::velflexlib::dataset {

// The lines below an end, except for some. The held ones stand one behind the other as rows, in their order.
// Invariant: the exceptions are in ascending order and below the end, so that memory goes by them and not by the
// lines: a file of a few bytes may promise 2^31 lines. Not thread-safe: guarded by the lock of the CDataBuffer that
// owns it.
class CHeldLines
{
public:
    CHeldLines() = default;
    explicit CHeldLines(std::uint64_t end, std::vector<std::uint64_t> exceptions = {})
        : m_end(end), m_exceptions(std::move(exceptions))
    {
    }

    bool Contains(std::uint64_t line) const
    {
        return line < m_end && (m_exceptions.empty() || !std::ranges::binary_search(m_exceptions, line));
    }

    // The number of rows.
    std::uint64_t Count() const { return m_end - m_exceptions.size(); }

    // No line from here on is held.
    std::uint64_t End() const { return m_end; }

    // The row of a line that is held.
    std::uint64_t RowOf(std::uint64_t line) const
    {
        return m_exceptions.empty() ? line : line - ExceptionsBefore(line);
    }

    // Keeps the lines of the first `rows` rows; there must be as many. When none is dropped the end stays.
    void Truncate(std::uint64_t rows)
    {
        if (rows == Count())
            return;
        m_end = rows;
        for (const std::uint64_t exception : m_exceptions)
            m_end += exception <= m_end ? 1 : 0;
        m_exceptions.resize(ExceptionsBefore(m_end));
    }

    // Calls use(line, row) for every line that is held, in their order.
    template <class Use>
    void ForEach(Use use) const
    {
        std::uint64_t row = 0;
        for (std::uint64_t line = 0; line < m_end; ++line) {
            if (Contains(line))
                use(line, row++);
        }
    }

private:
    std::size_t ExceptionsBefore(std::uint64_t line) const
    {
        return static_cast<std::size_t>(std::ranges::lower_bound(m_exceptions, line) - m_exceptions.begin());
    }

    std::uint64_t m_end = 0;
    std::vector<std::uint64_t> m_exceptions;
};

} // namespace veltaris::velflexlib::dataset
