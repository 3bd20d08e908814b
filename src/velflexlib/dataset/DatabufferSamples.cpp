// Reading and writing the samples of a channel.
#include "velflexlib/dataset/Databuffer.h"

#include <algorithm>
#include <utility>

namespace veltaris::velflexlib::dataset {

bool CDataBuffer::SetLineRaw(std::uint64_t line, std::span<const std::int32_t> values)
{
    {
        const std::lock_guard lock(m_mutex);
        if (line >= m_lineCount || values.size() > m_points)
            return false;
        StoreLine(line, values);
    }
    AnnounceChange(line);
    return true;
}

bool CDataBuffer::SetLineReal(std::uint64_t line, std::span<const double> values, RealToRawMode mode)
{
    const CSignalScale scale = GetSignalScale();
    if (!scale.ToRaw(0, mode))
        return false;
    std::vector<std::int32_t> raw(values.size());
    std::ranges::transform(values, raw.begin(), [&](double real) { return *scale.ToRaw(real, mode); });
    return SetLineRaw(line, raw);
}

void CDataBuffer::StoreLine(std::uint64_t line, std::span<const std::int32_t> values)
{
    CountLoaded(line, std::as_const(m_samples).Line(line));
    const bool staysWithout = values.empty() && LineAxisAt(line).count == 0;
    const auto stored = staysWithout ? std::span<std::int32_t>() : m_samples.WritableLine(line);
    m_lineStates.MarkWritten(line);
    const auto rest = std::ranges::transform(values, stored.begin(), CRawRange::Clamp).out;
    std::fill(rest, stored.end(), 0);
    RaiseLineCount(line, values.size());
    m_currentLine = line;
    WidenRange(stored);
    m_dataChanged = true;
    m_isEmpty = false;
}

bool CDataBuffer::SetPixelRaw(std::uint64_t point, std::uint64_t line, std::int32_t value)
{
    {
        const std::lock_guard lock(m_mutex);
        if (line >= m_lineCount || point >= m_points)
            return false;
        StorePixel(point, line, CRawRange::Clamp(value));
    }
    AnnounceChange(line);
    return true;
}

bool CDataBuffer::SetPixelReal(std::uint64_t point, std::uint64_t line, double value, RealToRawMode mode)
{
    const auto raw = GetSignalScale().ToRaw(value, mode);
    return raw && SetPixelRaw(point, line, *raw);
}

void CDataBuffer::StorePixel(std::uint64_t point, std::uint64_t line, std::int32_t value)
{
    const auto stored = m_samples.WritableLine(line).subspan(point, 1);
    const bool countsForRange = m_lineStates.Get(line) != CLineStates::neverWritten;
    CountLoaded(line, stored);
    stored.front() = value;
    if (countsForRange)
        WidenRange(stored);
    RaiseLineCount(line, point + 1);
    m_dataChanged = true;
}

bool CDataBuffer::CopyLine(std::uint64_t line, std::vector<std::int32_t>& samples) const
{
    const std::lock_guard lock(m_mutex);
    if (line >= m_lineCount)
        return false;
    const std::uint64_t count = LineAxisAt(line).count;
    if (count > m_points)
        return false;
    const auto valid = m_samples.Line(line).first(count);
    samples.assign(valid.begin(), valid.end());
    return true;
}

CRawRange CDataBuffer::GetDataRange() const
{
    const std::lock_guard lock(m_mutex);
    if (std::exchange(m_rangeLacksLoaded, false)) {
        for (std::uint64_t line = 0; line < m_lineCount; ++line) {
            if (LineAxisAt(line).count > 0)
                WidenRange(m_samples.Line(line));
        }
    }
    return m_dataRange;
}

void CDataBuffer::CountLoaded(std::uint64_t line, std::span<const std::int32_t> overwritten) const
{
    if (m_rangeLacksLoaded && LineAxisAt(line).count > 0)
        WidenRange(overwritten);
}

void CDataBuffer::WidenRange(std::span<const std::int32_t> samples) const
{
    if (samples.empty())
        return;
    const auto [lowest, highest] = std::ranges::minmax(samples);
    m_dataRange.Widen(lowest);
    m_dataRange.Widen(highest);
}

} // namespace veltaris::velflexlib::dataset
