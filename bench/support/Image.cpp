#include "support/Image.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <random>
#include <vector>

namespace bench {

namespace {

constexpr std::size_t period = 65'536;

// Lines are windows at different offsets into two periods of the same values.
std::size_t OffsetOf(std::uint64_t line)
{
    return static_cast<std::size_t>(line * 1031 % period);
}

template <class T>
std::vector<T> TwoPeriods()
{
    const double top = std::ldexp(1.0, 8 * sizeof(T) - 1);
    std::minstd_rand noise; // NOLINT(bugprone-random-generator-seed,cert-msc32-c): the same in each run
    std::vector<T> values(2 * period);
    for (std::size_t i = 0; i < period; ++i) {
        const double turns = static_cast<double>(i) / period;
        const double wave = 0.6 * std::sin(3 * 2 * std::numbers::pi * turns) + 0.2 * std::sin(200 * turns);
        const double value = wave + 0.05 * static_cast<double>(noise()) / static_cast<double>(std::minstd_rand::max());
        values[i] = values[i + period] = static_cast<T>(value * top * 0.99);
    }
    return values;
}

template <class T>
std::span<const std::byte> StoredLineOf(const Shape& shape, std::uint64_t line)
{
    static const std::vector<T> values = TwoPeriods<T>();
    return std::as_bytes(std::span(values).subspan(OffsetOf(line), shape.points));
}

template <class T>
std::span<const std::int32_t> RawLineOf(const Shape& shape, std::uint64_t line)
{
    static const std::vector<std::int32_t> values = [&] {
        const std::vector<T> stored = TwoPeriods<T>();
        std::vector<std::int32_t> raw(stored.size());
        std::ranges::transform(stored, raw.begin(), [&](T value) { return RawOf(value, 8 * sizeof(T)); });
        return raw;
    }();
    return std::span(values).subspan(OffsetOf(line), shape.points);
}

template <class T>
std::span<const double> RealLineOf(const Shape& shape, std::uint64_t line)
{
    static const std::vector<double> values = [&] {
        const std::vector<T> stored = TwoPeriods<T>();
        std::vector<double> real(stored.size());
        const double halfStep = std::ldexp(
            0.5, std::max(30 - 8 * static_cast<int>(sizeof(T)), 0)); // so that truncation gives the same sample
        std::ranges::transform(stored, real.begin(), [&](T value) {
            return (RawOf(value, 8 * sizeof(T)) + halfStep + 0x1p29) / (0x1p30 - 1);
        });
        return real;
    }();
    return std::span(values).subspan(OffsetOf(line), shape.points);
}

// Calls `use` with a value of the type in which samples are stored.
template <class Use>
auto WithStoredType(int bits, Use use)
{
    switch (bits) {
    case 8:
        return use(std::int8_t{});
    case 16:
        return use(std::int16_t{});
    default:
        return use(std::int32_t{});
    }
}

} // namespace

std::span<const std::byte> StoredLine(const Shape& shape, std::uint64_t line)
{
    return WithStoredType(shape.bits, [&](auto type) { return StoredLineOf<decltype(type)>(shape, line); });
}

std::span<const std::int32_t> RawLine(const Shape& shape, std::uint64_t line)
{
    return WithStoredType(shape.bits, [&](auto type) { return RawLineOf<decltype(type)>(shape, line); });
}

std::span<const double> RealLine(const Shape& shape, std::uint64_t line)
{
    return WithStoredType(shape.bits, [&](auto type) { return RealLineOf<decltype(type)>(shape, line); });
}

void CChecksum::Add(std::span<const std::int32_t> samples)
{
    std::int64_t sum = 0;
    for (const std::int32_t sample : samples)
        sum += sample;
    m_sum += static_cast<std::uint64_t>(sum);
}

} // namespace bench
