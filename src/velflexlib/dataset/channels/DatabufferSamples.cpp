// Reading and writing the samples of a channel.
#include "velflexlib/dataset/channels/Databuffer.h"

#include <algorithm>
#include <utility>

namespace veltaris::velflexlib::dataset {

namespace {

// Both kinds of values that a line is written from tell what is to be known of all of them, and hand them out as raw
// samples, piece by piece.
struct CRawValues
{
    std::span<const std::int32_t> values;

    CSampleSurvey Survey() const { return Kernels().survey(values.data(), values.size()); }
    void Read(std::uint64_t first, std::span<std::int32_t> samples) const
    {
        Kernels().clamp(values.data() + first, samples.size(), samples.data());
    }
};

using Piece = std::array<std::int32_t, samplesPerPiece>;

struct CRealValues
{
    std::span<const double> values;
    CSignalScale scale;
    RealToRawMode mode;

    CSampleSurvey Survey() const
    {
        CSampleSurvey survey{CRawRange::highestPossible, CRawRange::lowestPossible, 0};
        Piece buffer; // NOLINT(cppcoreguidelines-pro-type-member-init): written first
        ForEachPiece(values.size(), [&](std::uint64_t first, std::uint64_t count) {
            Read(first, std::span(buffer).first(count));
            const CSampleSurvey ofPiece = Kernels().survey(buffer.data(), count);
            survey = {std::min(survey.lowest, ofPiece.lowest), std::max(survey.highest, ofPiece.highest),
                      survey.bits | ofPiece.bits};
        });
        return survey;
    }
    void Read(std::uint64_t first, std::span<std::int32_t> samples) const
    {
        scale.ToRaw(values.subspan(first, samples.size()), mode, samples.data());
    }
};

} // namespace

bool CDataBuffer::SetLineRaw(std::uint64_t line, std::span<const std::int32_t> values)
{
    return SetLine(line, CRawValues{values});
}

bool CDataBuffer::SetLineReal(std::uint64_t line, std::span<const double> values, RealToRawMode mode)
{
    const CSignalScale scale = GetSignalScale();
    if (!scale.ToRaw(0, mode))
        return false;
    const CRealValues real{values, scale, mode};
    if (values.size() > samplesPerPiece)
        return SetLine(line, real);
    Piece raw; // NOLINT(cppcoreguidelines-pro-type-member-init): written first
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
        if (HoldBack(m_changePending))
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
    const bool staysWithout = count == 0 && m_lineAxes.CountAt(line) == 0;
    m_lineStates.PrepareToMark(line);
    const CSampleSurvey survey = values.Survey();
    if (!staysWithout)
        m_samples.MakeWritable(line, survey.bits);

    m_latestFit.lineOperator = nullptr;
    if (IsRangeOwed(line))
        WidenRange(m_samples.Line(line));
    if (count > 0)
        WidenRange(survey);
    Piece buffer; // NOLINT(cppcoreguidelines-pro-type-member-init): written first
    ForEachPiece(count, [&](std::uint64_t first, std::uint64_t pieceCount) {
        const auto piece = std::span(buffer).first(pieceCount);
        values.Read(first, piece);
        m_samples.Write(line, first, piece);
    });
    if (!staysWithout && count < m_lineAxes.Points()) {
        m_samples.FillWithZeros(line, count);
        m_dataRange.Widen(0);
    }
    m_lineStates.MarkWritten(line);
    m_lineAxes.RaiseCount(line, count);
    m_currentLine = line;
    m_dataChanged = true;
    m_isEmpty = false;
}

bool CDataBuffer::SetPixelRaw(std::uint64_t point, std::uint64_t line, std::int32_t value)
{
    {
        const std::lock_guard lock(m_mutex);
        if (line >= m_lineAxes.Lines() || point >= m_lineAxes.Points())
            return false;
        StorePixel(point, line, CRawRange::Clamp(value));
        if (HoldBack(m_changePending))
            return true;
    }
    OnChanged.emit(*this, line);
    return true;
}

bool CDataBuffer::SetPixelReal(std::uint64_t point, std::uint64_t line, double value, RealToRawMode mode)
{
    const auto raw = GetSignalScale().ToRaw(value, mode);
    return raw && SetPixelRaw(point, line, *raw);
}

void CDataBuffer::StorePixel(std::uint64_t point, std::uint64_t line, std::int32_t value)
{
    m_samples.MakeWritable(line, value);
    m_latestFit.lineOperator = nullptr;
    if (IsRangeOwed(line))
        m_dataRange.Widen(m_samples.Line(line).At(point));
    if (m_lineStates.Get(line) != CLineStates::neverWritten)
        m_dataRange.Widen(value);
    m_samples.Write(line, point, value);
    m_lineAxes.RaiseCount(line, point + 1);
    m_dataChanged.store(true, std::memory_order_relaxed); // what it tells of is guarded by the lock
}

bool CDataBuffer::CanReadLine(std::uint64_t line) const
{
    const std::lock_guard lock(m_mutex);
    return IsReadable(line);
}

const CLineFit& CDataBuffer::FitOf(std::uint64_t line, const CStoredSamples& samples,
                                   const CLineOperator& lineOperator) const
{
    static constexpr CLineFit none{};
    if (lineOperator.IsLocal())
        return none;
    if (m_latestFit.lineOperator != &lineOperator || m_latestFit.line != line)
        m_latestFit = {line, &lineOperator, lineOperator.Fit(samples)};
    return m_latestFit.fit;
}

// Calls write(first, count, correct), where correct(std::span<std::int32_t>) gives that piece of the corrected line.
template <class Write>
bool CDataBuffer::ReadLine(std::uint64_t line, const CLineOperator& lineOperator, Write write) const
{
    if (!IsReadable(line))
        return false;
    const CStoredSamples samples = ValidSamples(line);
    if (samples.Count() < lineOperator.GetLeastSamples())
        return true;
    const CLineFit& fit = FitOf(line, samples, lineOperator);
    ForEachPiece(samples.Count(), [&](std::uint64_t first, std::uint64_t count) {
        write(first, count, [&](std::span<std::int32_t> piece) { lineOperator.Apply(fit, samples, first, piece); });
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
    Piece raw; // NOLINT(cppcoreguidelines-pro-type-member-init): written first
    return ReadLine(line, lineOperator, [&](std::uint64_t first, std::uint64_t count, auto correct) {
        const auto piece = std::span(raw).first(count);
        correct(piece);
        scale.ToReal(piece, values + first);
    });
}

bool CDataBuffer::GetPixel(std::uint64_t point, std::uint64_t line, const CLineOperator& lineOperator,
                           std::int32_t& value) const
{
    if (!IsReadable(line))
        return false;
    const CStoredSamples samples = ValidSamples(line);
    if (point >= samples.Count() || samples.Count() < lineOperator.GetLeastSamples())
        return false;
    if (lineOperator.GetPixelSource() == PixelSource::StoredSample)
        value = samples.At(point);
    else
        lineOperator.Apply(FitOf(line, samples, lineOperator), samples, point, {&value, 1});
    return true;
}

bool CDataBuffer::ReadPixelRaw(std::uint64_t point, std::uint64_t line, const CLineOperator& lineOperator,
                               std::int32_t& value) const
{
    const std::lock_guard lock(m_mutex);
    return GetPixel(point, line, lineOperator, value);
}

bool CDataBuffer::ReadPixelReal(std::uint64_t point, std::uint64_t line, const CLineOperator& lineOperator,
                                double& value) const
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
    for (std::uint64_t line = 0; m_rangeLacksLoaded && line < m_lineAxes.Lines(); ++line) {
        if (IsRangeOwed(line))
            WidenRange(m_samples.Line(line));
    }
    m_rangeLacksLoaded = false;
    return m_dataRange;
}

bool CDataBuffer::IsRangeOwed(std::uint64_t line) const
{
    return m_rangeLacksLoaded && m_lineAxes.CountAt(line) > 0;
}

void CDataBuffer::WidenRange(const CStoredSamples& samples) const
{
    if (samples.Count() > 0)
        WidenRange(samples.Kernels().survey(samples.From(0), samples.Count()));
}

void CDataBuffer::WidenRange(const CSampleSurvey& survey) const
{
    m_dataRange.Widen(survey.lowest);
    m_dataRange.Widen(survey.highest);
}

} // namespace veltaris::velflexlib::dataset
