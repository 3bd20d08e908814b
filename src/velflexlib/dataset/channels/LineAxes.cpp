#include "velflexlib/dataset/channels/LineAxes.h"

#include <algorithm>
#include <bit>
#include <vector>

namespace veltaris::velflexlib::dataset {

namespace {

bool Same(double a, double b)
{
    return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

} // namespace

bool operator==(const CLineAxis& a, const CLineAxis& b)
{
    return a.count == b.count && Same(a.min, b.min) && Same(a.range, b.range);
}

CLineAxis CLineAxes::At(std::uint64_t line) const
{
    const auto own = m_own.find(line);
    CLineAxis axis = own == m_own.end() ? m_common : own->second;
    if (line >= m_missingFrom)
        axis.count = 0;
    return axis;
}

std::uint64_t CLineAxes::LongestLine() const
{
    if (m_own.size() < m_lines)
        return m_common.count;
    std::uint64_t longest = 0;
    for (const auto& [line, axis] : m_own)
        longest = std::max(longest, axis.count);
    return std::min(longest, m_common.count);
}

CHeldLines CLineAxes::LinesWithSamples(std::uint64_t end) const
{
    std::vector<std::uint64_t> empty;
    for (const auto& [line, axis] : m_own) {
        if (axis.count == 0 && line < end)
            empty.push_back(line);
    }
    return CHeldLines(end, std::move(empty));
}

void CLineAxes::RaiseUncommonCount(std::uint64_t line, std::uint64_t count)
{
    if (line >= m_missingFrom)
        m_missingFrom = m_lines;
    const auto own = m_own.find(line);
    if (own == m_own.end())
        return;
    own->second.count = std::max(own->second.count, count);
    if (own->second == m_common)
        m_own.erase(own);
}

void CLineAxes::Move(double CLineAxis::*field, double value)
{
    const double old = std::exchange(m_common.*field, value);
    for (auto& [line, axis] : m_own) {
        if (Same(axis.*field, old))
            axis.*field = value;
    }
}

} // namespace veltaris::velflexlib::dataset
