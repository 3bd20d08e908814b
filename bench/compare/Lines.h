// The lines that each contender writes and reads back in the line-by-line benchmarks.
#pragma once

#include "compare/Baseline.h"
#include "support/Image.h"

#include <algorithm>
#include <cstdint>
#include <span>
#include <utility>
#include <vector>

namespace bench {

enum class Values
{
    Raw,
    Real,
};

// Produces the lines of an image and sums up those that are read back. It does the conversions that the library does by
// itself and that all others leave to their caller. A pointer that it returns is valid until the next call. Not
// thread-safe.
class CLines
{
public:
    CLines(const Shape& shape, Values values) : m_shape(shape), m_values(values) {}

    const std::int32_t* Raw(std::uint64_t line)
    {
        if (m_values == Values::Raw)
            return RawLine(m_shape, line).data();
        m_raw.resize(m_shape.points);
        baseline::FromReal(RealLine(m_shape, line).data(), m_raw.data(), m_raw.size());
        return m_raw.data();
    }

    const std::int32_t* Stored(std::uint64_t line)
    {
        const std::span raw(Raw(line), m_shape.points);
        m_stored.resize(raw.size());
        std::ranges::transform(raw, m_stored.begin(), [&](std::int32_t v) { return v >> (30 - m_shape.bits); });
        return m_stored.data();
    }

    void AddRaw(std::span<const std::int32_t> line)
    {
        if (m_values == Values::Raw)
            return m_checksum.Add(line);
        m_real.resize(line.size());
        baseline::ToReal(line.data(), m_real.data(), line.size());
        m_checksum.Add(m_real);
    }

    void AddStored(std::span<const std::int32_t> line)
    {
        m_raw.resize(line.size());
        std::ranges::transform(line, m_raw.begin(), [&](std::int32_t v) { return RawOf(v, m_shape.bits); });
        AddRaw(m_raw);
    }

    double TakeChecksum() { return std::exchange(m_checksum, {}).Value(); }

private:
    Shape m_shape;
    Values m_values;
    CChecksum m_checksum;
    std::vector<std::int32_t> m_raw;
    std::vector<std::int32_t> m_stored;
    std::vector<double> m_real;
};

} // namespace bench
