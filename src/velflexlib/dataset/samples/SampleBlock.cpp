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

std::uint64_t CheckedCount(std::uint64_t points, std::uint64_t lines, std::uint64_t heldLines)
{
    const bool tooLarge = std::max(points, lines) > limits::channelDimension;
    const bool pointless = points == 0 && lines > limits::pointlessLines;
    const std::uint64_t count = velstdlib::math::Product(points, heldLines);
    if (tooLarge || pointless || count > limits::channelSamples)
        throw std::bad_alloc();
    return count;
}

} // namespace

CSampleBlock::CSampleBlock(std::uint64_t points, std::uint64_t lines, CHeldLines held, SampleWidth width)
    : m_points(points), m_lines(lines), m_width(width), m_held(std::move(held)),
      m_count(CheckedCount(points, lines, m_held.Count())), m_memory(m_count * BytesPerSample(width))
{
}

CHeldLines CSampleBlock::HeldToWrite(std::uint64_t line) const
{
    if (m_held.Contains(line))
        return m_held;
    return CHeldLines(line < m_held.End() ? m_held.End() : m_lines);
}

void CSampleBlock::Move(std::uint64_t line, std::int32_t bits)
{
    const SampleWidth width = FitInto(m_width, bits) ? m_width : SampleWidth::Bits32;
    CSampleBlock moved(m_points, m_lines, HeldToWrite(line), width);
    m_held.ForEach([&](std::uint64_t l, std::uint64_t) {
        TranscodeSamples(AddressOf(l, 0), m_width, m_points, moved.AddressOf(l, 0), width);
    });
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
    std::byte* const bytes = m_memory.Bytes().data();
    for (std::uint64_t row = 1; newBytes > 0 && row < m_held.Count(); ++row)
        std::memmove(bytes + row * newBytes, bytes + row * oldBytes, newBytes);
    m_points = points;
    m_count = m_held.Count() * points;
}

void CSampleBlock::KeepLines(CHeldLines held)
{
    const std::size_t lineBytes = m_points * BytesPerSample(m_width);
    std::byte* const bytes = m_memory.Bytes().data();
    held.ForEach([&](std::uint64_t line, std::uint64_t row) {
        if (lineBytes > 0)
            std::memmove(bytes + row * lineBytes, AddressOf(line, 0), lineBytes);
    });
    m_held = std::move(held);
    m_count = m_held.Count() * m_points;
}

void CSampleBlock::KeepBytes(std::size_t bytes)
{
    const std::size_t lineBytes = m_points * BytesPerSample(m_width);
    if (lineBytes > 0)
        m_held.Truncate(std::min<std::uint64_t>(bytes / lineBytes, m_held.Count()));
    m_count = m_held.Count() * m_points;
}

} // namespace veltaris::velflexlib::dataset
