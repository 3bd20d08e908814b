#include "velflexlib/dataset/SampleBlock.h"

#include "velstdlib/util/Limits.h"

#include <algorithm>
#include <new>

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

} // namespace

CSampleBlock::CSampleBlock(std::uint64_t points, std::uint64_t lines, std::int32_t fill)
    : m_points(points), m_count(CheckedCount(points, lines)),
      m_samples(static_cast<std::int32_t*>(std::calloc(m_count, sizeof(std::int32_t))))
{
    if (!m_samples && m_count > 0)
        throw std::bad_alloc();
    if (fill != 0)
        std::ranges::fill(All(), fill);
}

void CSampleBlock::ShortenLines(std::uint64_t points)
{
    const std::uint64_t lines = m_points > 0 ? m_count / m_points : 0;
    std::int32_t* const samples = m_samples.get();
    for (std::uint64_t line = 1; line < lines; ++line)
        std::copy_n(samples + line * m_points, points, samples + line * points);
    m_points = points;
    m_count = lines * points;
}

} // namespace veltaris::velflexlib::dataset
