// The samples of all benchmarks: waves with some noise, the same in each run. The functions may be called from any
// thread; they compute their values once and keep them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <numeric>
#include <span>

namespace bench {

// The size of an image and the width of its stored samples.
struct Shape
{
    std::uint64_t points; // at most 65 536
    std::uint64_t lines;
    int bits; // per stored sample: 8, 16 or 32

    std::uint64_t Samples() const { return points * lines; }
    std::uint64_t Bytes() const { return Samples() * static_cast<std::uint64_t>(bits) / 8; }
};

// Converts a stored sample to a raw sample of 30 bits.
constexpr std::int32_t RawOf(std::int32_t stored, int bits)
{
    return bits == 32 ? stored >> 2 : stored << (30 - bits);
}

// One line of an image: as stored, as raw samples, and as the real values that become these raw samples on a signal
// axis from 0 to 1. The spans stay valid until the program ends.
std::span<const std::byte> StoredLine(const Shape& shape, std::uint64_t line);
std::span<const std::int32_t> RawLine(const Shape& shape, std::uint64_t line);
std::span<const double> RealLine(const Shape& shape, std::uint64_t line);

// Sums up lines of samples. Sums of integers are exact. Not thread-safe.
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
