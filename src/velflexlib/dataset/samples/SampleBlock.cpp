#include "velflexlib/dataset/samples/SampleBlock.h"

#include "velstdlib/math/Product.h"
#include "velstdlib/util/Limits.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <utility>

namespace veltaris::velflexlib::dataset {

namespace {

namespace limits = velstdlib::util::limits;

std::uint64_t CheckedCount(std::uint64_t points, std::uint64_t lines)
{
    const bool tooLarge = std::max(points, lines) > limits::channelDimension;
    const bool pointless = points == 0 && lines > limits::pointlessLines;
    const std::uint64_t count = velstdlib::math::Product(points, lines);
    if (tooLarge || pointless || count > limits::channelSamples)
        throw std::bad_alloc();
    return count;
}

} // namespace

CSampleBlock::CSampleBlock(std::uint64_t points, std::uint64_t lines, SampleWidth width,
                           std::vector<std::uint64_t> absentLines)
    : m_points(points), m_lines(lines), m_width(width), m_absentLines(std::move(absentLines)),
      m_count(CheckedCount(points, lines - m_absentLines.size())), m_memory(m_count * BytesPerSample(width))
{
}

std::uint64_t CSampleBlock::AbsentBefore(std::uint64_t line) const
{
    return static_cast<std::uint64_t>(std::ranges::lower_bound(m_absentLines, line) - m_absentLines.begin());
}

// To memory that has room for what is to be written.
void CSampleBlock::Move(std::uint64_t line, std::int32_t bits)
{
    const bool fits = FitInto(m_width, bits);
    CSampleBlock moved(m_points, m_lines, fits ? m_width : SampleWidth::Bits32,
                       IsAbsent(line) ? std::vector<std::uint64_t>() : m_absentLines);
    for (std::uint64_t l = 0; l < m_lines; ++l) {
        if (!IsAbsent(l))
            TranscodeSamples(AddressOf(l, 0), m_width, m_points, moved.AddressOf(l, 0), moved.m_width);
    }
    *this = std::move(moved);
}

void CSampleBlock::Write(std::uint64_t line, std::uint64_t first, std::span<const std::int32_t> samples)
{
    EncodeSamples(samples, m_width, AddressOf(line, first));
}

void CSampleBlock::FillWithZeros(std::uint64_t line, std::uint64_t first)
{
    if (first < m_points)
        std::memset(AddressOf(line, first), 0, (m_points - first) * BytesPerSample(m_width));
}

void CSampleBlock::ShortenLines(std::uint64_t points)
{
    const std::size_t oldBytes = m_points * BytesPerSample(m_width);
    const std::size_t newBytes = points * BytesPerSample(m_width);
    const std::uint64_t lines = m_lines - m_absentLines.size();
    std::byte* const bytes = m_memory.Bytes().data();
    for (std::uint64_t line = 1; newBytes > 0 && line < lines; ++line)
        std::memmove(bytes + line * newBytes, bytes + line * oldBytes, newBytes);
    m_points = points;
    m_count = lines * points;
}

void CSampleBlock::RemoveLines(std::vector<std::uint64_t> absentLines)
{
    const std::size_t lineBytes = m_points * BytesPerSample(m_width);
    std::byte* to = m_memory.Bytes().data();
    for (std::uint64_t line = 0; line < m_lines; ++line) {
        if (std::ranges::binary_search(absentLines, line))
            continue;
        if (lineBytes > 0)
            std::memmove(to, AddressOf(line, 0), lineBytes);
        to += lineBytes;
    }
    m_absentLines.swap(absentLines);
    m_count = (m_lines - m_absentLines.size()) * m_points;
}

} // namespace veltaris::velflexlib::dataset
