// Reading and writing the samples of a channel.
#include "velflexlib/dataset/channels/Databuffer.h"
#include "velflexlib/dataset/channels/LineValues.h"
#include "velstdlib/machine/StackGuard.h"

namespace veltaris::velflexlib::dataset {

bool CDataBuffer::SetLineRaw(std::uint64_t line, std::span<const std::int32_t> values)
{
    return SetLine(line, CRawValues{values});
}

bool CDataBuffer::SetLineReal(std::uint64_t line, std::span<const double> values, RealToRawMode mode)
{
    const CSignalScale scale = LockAndGetSignalScale();
    if (!scale.ToRaw(0, mode))
        return false;
    const CRealValues real{values, scale, mode};
    if (values.size() > samplesPerPiece)
        return SetLine(line, real);
    SampleChunk raw; // NOLINT(cppcoreguidelines-pro-type-member-init): written first
    real.Read(0, std::span(raw).first(values.size()));
    return SetLine(line, CRawValues{std::span(raw).first(values.size())});
}

template <class Values>
bool CDataBuffer::SetLine(std::uint64_t line, const Values& values)
{
    {
        const std::lock_guard lock(m_mutex);
        if (line >= m_lineAxes.Lines() || values.values.size() > m_lineAxes.Points())
            return false;
        StoreLine(line, values);
        if (m_notifications.HoldChanged())
            return true;
    }
    OnChanged.emit(*this, line);
    return true;
}

// What takes memory comes first: a failure of that changes nothing.
template <class Values>
void CDataBuffer::StoreLine(std::uint64_t line, const Values& values)
{
    const std::uint64_t count = values.values.size();
    m_lineStates.PrepareToMark(line);
    if (count > 0 || m_lineAxes.CountAt(line) > 0) // otherwise the line stays without storage
        WriteSamples(line, values);
    m_latestFit.Forget();
    m_lineStates.MarkWritten(line);
    m_lineAxes.RaiseCount(line, count);
    m_currentLine = line;
    m_dataChanged = true;
    m_isEmpty = false;
}

template <class Values>
void CDataBuffer::WriteSamples(std::uint64_t line, const Values& values)
{
    const std::uint64_t count = values.values.size();
    const CSampleSurvey survey = values.Survey();
    MakeWritable(line, survey.bits);
    m_range.Replace(m_samples.Line(line));
    if (count > 0)
        m_range.Widen(survey);
    SampleChunk buffer; // NOLINT(cppcoreguidelines-pro-type-member-init): written first
    ForEachPiece(count, [&](std::uint64_t first, std::uint64_t chunkCount) {
        const auto chunk = std::span(buffer).first(chunkCount);
        values.Read(first, chunk);
        m_samples.Write(line, first, chunk);
    });
    if (count < m_lineAxes.Points()) {
        m_samples.FillWithZeros(line, count);
        m_range.Widen(0);
    }
}

// Lines that come to be held are not owed by the range: what stands in them was never loaded.
void CDataBuffer::MakeWritable(std::uint64_t line, std::int32_t bits)
{
    if (m_range.OwesSamples() && !m_samples.Held().Contains(line))
        m_range.Settle(m_samples.All());
    m_samples.MakeWritable(line, bits);
}

VELOXD_NO_STACK_GUARD bool CDataBuffer::SetPixelRaw(std::uint64_t point, std::uint64_t line, std::int32_t value)
{
    {
        const std::lock_guard lock(m_mutex);
        if (line >= m_lineAxes.Lines() || point >= m_lineAxes.Points())
            return false;
        StorePixel(point, line, CRawRange::Clamp(value));
        if (m_notifications.HoldChanged())
            return true;
    }
    OnChanged.emit(*this, line);
    return true;
}

VELOXD_NO_STACK_GUARD bool CDataBuffer::SetPixelReal(std::uint64_t point, std::uint64_t line, double value,
                                                     RealToRawMode mode)
{
    const auto raw = LockAndGetSignalScale().ToRaw(value, mode);
    return raw && SetPixelRaw(point, line, *raw);
}

void CDataBuffer::StorePixel(std::uint64_t point, std::uint64_t line, std::int32_t value)
{
    MakeWritable(line, value);
    m_latestFit.Forget();
    if (m_range.OwesSamples())
        m_range.Replace(m_samples.Line(line), point);
    if (m_lineStates.Get(line) != CLineStates::neverWritten)
        m_range.Widen(value);
    m_samples.Write(line, point, value);
    m_lineAxes.RaiseCount(line, point + 1);
    m_dataChanged.store(true, std::memory_order_relaxed); // what it tells of is guarded by the lock
}

bool CDataBuffer::CanReadLine(std::uint64_t line) const
{
    const std::lock_guard lock(m_mutex);
    return IsReadable(line);
}

// Calls write(first, count, correct), where correct(std::span<std::int32_t>) gives that chunk of the corrected line.
template <class Write>
bool CDataBuffer::ReadLine(std::uint64_t line, const CLineOperator& lineOperator, Write write) const
{
    if (!IsReadable(line))
        return false;
    const CStoredSamples samples = ValidSamples(line);
    if (samples.Count() < lineOperator.GetLeastSamples())
        return true;
    const CLineFit& fit = m_latestFit.Of(line, samples, lineOperator);
    ForEachPiece(samples.Count(), [&](std::uint64_t first, std::uint64_t count) {
        write(first, count, [&](std::span<std::int32_t> chunk) { lineOperator.Apply(fit, samples, first, chunk); });
    });
    return true;
}

bool CDataBuffer::ReadLineRaw(std::uint64_t line, const CLineOperator& lineOperator, std::int32_t* values) const
{
    const std::lock_guard lock(m_mutex);
    return ReadLine(line, lineOperator, [&](std::uint64_t first, std::uint64_t count, auto correct) {
        correct(std::span(values + first, count));
    });
}

bool CDataBuffer::ReadLineReal(std::uint64_t line, const CLineOperator& lineOperator, double* values) const
{
    const std::lock_guard lock(m_mutex);
    const CSignalScale scale = SignalScale();
    SampleChunk raw; // NOLINT(cppcoreguidelines-pro-type-member-init): written first
    return ReadLine(line, lineOperator, [&](std::uint64_t first, std::uint64_t count, auto correct) {
        const auto chunk = std::span(raw).first(count);
        correct(chunk);
        scale.ToReal(chunk, values + first);
    });
}

bool CDataBuffer::GetPixel(std::uint64_t point, std::uint64_t line, const CLineOperator& lineOperator,
                           std::int32_t& value) const
{
    if (line >= m_lineAxes.Lines())
        return false;
    const std::uint64_t count = m_lineAxes.CountAt(line);
    if (point >= count || count > m_lineAxes.Points() || count < lineOperator.GetLeastSamples())
        return false;
    const CStoredSamples samples = m_samples.Line(line).First(count);
    if (lineOperator.GetPixelSource() == PixelSource::StoredSample)
        value = samples.At(point);
    else
        lineOperator.Apply(m_latestFit.Of(line, samples, lineOperator), samples, point, {&value, 1});
    return true;
}

VELOXD_NO_STACK_GUARD bool CDataBuffer::ReadPixelRaw(std::uint64_t point, std::uint64_t line,
                                                     const CLineOperator& lineOperator, std::int32_t& value) const
{
    const std::lock_guard lock(m_mutex);
    return GetPixel(point, line, lineOperator, value);
}

VELOXD_NO_STACK_GUARD bool CDataBuffer::ReadPixelReal(std::uint64_t point, std::uint64_t line,
                                                      const CLineOperator& lineOperator, double& value) const
{
    const std::lock_guard lock(m_mutex);
    std::int32_t raw = 0;
    if (!GetPixel(point, line, lineOperator, raw))
        return false;
    value = SignalScale().ToReal(raw);
    return true;
}

CRawRange CDataBuffer::GetDataRange() const
{
    const std::lock_guard lock(m_mutex);
    return m_range.Settle(m_samples.All());
}

} // namespace veltaris::velflexlib::dataset
