// The samples that everything is measured with: waves with some noise, the same in each run.
#pragma once

#include <cstddef>
#include <cstdint>
#include <numeric>
#include <span>

namespace bench {

struct Shape
{
    std::uint64_t points; // at most 65 536
    std::uint64_t lines;
    int bits; // in which a sample is stored: 8, 16 or 32

    std::uint64_t Samples() const { return points * lines; }
    std::uint64_t Bytes() const { return Samples() * static_cast<std::uint64_t>(bits) / 8; }
};

// The raw sample of 30 bits that a stored one stands for.
constexpr std::int32_t RawOf(std::int32_t stored, int bits)
{
    return bits == 32 ? stored >> 2 : stored << (30 - bits);
}

// One line: as it is stored, as raw samples, and as real values that give these on a signal axis from 0 to 1.
std::span<const std::byte> StoredLine(const Shape& shape, std::uint64_t line);
std::span<const std::int32_t> RawLine(const Shape& shape, std::uint64_t line);
std::span<const double> RealLine(const Shape& shape, std::uint64_t line);

// Adds up whole lines. That of integers is exact in the double that it becomes.
class CChecksum
{
public:
    void Add(std::span<const std::int32_t> samples);
    void Add(std::span<const double> values) { m_realSum = std::accumulate(values.begin(), values.end(), m_realSum); }
    double Value() const { return static_cast<double>(m_sum % (std::uint64_t{1} << 52)) + m_realSum; }

private:
    std::uint64_t m_sum = 0;
    double m_realSum = 0;
};

} // namespace bench
