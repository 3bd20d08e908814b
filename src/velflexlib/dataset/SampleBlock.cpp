#include "velflexlib/dataset/SampleBlock.h"

#include "velstdlib/util/Limits.h"

#include <algorithm>
#include <new>
#include <utility>

namespace veltaris::velflexlib::dataset {

namespace {

namespace limits = velstdlib::util::limits;

std::size_t CheckedCount(std::uint64_t points, std::uint64_t lines)
{
    const bool tooLarge = std::max(points, lines) > limits::channelDimension;
    const bool pointless = points == 0 && lines > limits::pointlessLines;
    if (tooLarge || pointless || points * lines > limits::channelSamples)
        throw std::bad_alloc();
    return points * lines;
}

// Unlike operator new, calloc leaves pages alone that the system has zeroed.
std::int32_t* AllocateZeros(std::size_t count)
{
    auto* const samples = std::calloc(count, sizeof(std::int32_t)); // NOLINT(cppcoreguidelines-no-malloc)
    if (!samples && count > 0)
        throw std::bad_alloc();
    return static_cast<std::int32_t*>(samples);
}

} // namespace

CSampleBlock::CSampleBlock(std::uint64_t points, std::uint64_t lines, std::vector<std::uint64_t> absentLines)
    : m_points(points), m_lines(lines), m_absentLines(std::move(absentLines)),
      m_count(CheckedCount(points, lines - m_absentLines.size())), m_samples(AllocateZeros(m_count))
{
}

bool CSampleBlock::IsAbsent(std::uint64_t line) const
{
    return std::ranges::binary_search(m_absentLines, line);
}

std::size_t CSampleBlock::Offset(std::uint64_t line) const
{
    const auto absentBefore = std::ranges::lower_bound(m_absentLines, line) - m_absentLines.begin();
    return (line - static_cast<std::uint64_t>(absentBefore)) * m_points;
}

std::span<const std::int32_t> CSampleBlock::Line(std::uint64_t line) const
{
    return IsAbsent(line) ? std::span<const std::int32_t>() : All().subspan(Offset(line), m_points);
}

std::span<std::int32_t> CSampleBlock::WritableLine(std::uint64_t line)
{
    if (IsAbsent(line))
        GiveAllLinesStorage();
    return All().subspan(Offset(line), m_points);
}

void CSampleBlock::GiveAllLinesStorage()
{
    CSampleBlock whole(m_points, m_lines);
    for (std::uint64_t line = 0; line < m_lines; ++line)
        std::ranges::copy(Line(line), whole.All().subspan(line * m_points).begin());
    *this = std::move(whole);
}

void CSampleBlock::ShortenLines(std::uint64_t points)
{
    const std::uint64_t lines = m_lines - m_absentLines.size();
    std::int32_t* const samples = m_samples.get();
    for (std::uint64_t line = 1; line < lines; ++line)
        std::copy_n(samples + line * m_points, points, samples + line * points);
    m_points = points;
    m_count = lines * points;
}

} // namespace veltaris::velflexlib::dataset
