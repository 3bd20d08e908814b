// What the serialisers need of a channel.
#include "velflexlib/dataset/channels/Databuffer.h"

#include <algorithm>
#include <utility>

namespace veltaris::velflexlib::dataset {

void CDataBuffer::PrepareForSave()
{
    {
        const std::lock_guard lock(m_mutex);
        RemoveEmptyLines();
        if (m_lineAxes.LongestLine() == m_lineAxes.Points())
            return;
    }
    OnBeforeReshape.emit();
    {
        const std::lock_guard lock(m_mutex);
        RemoveEmptyLines();              // both again: a slot may have written lines
        m_range.Settle(m_samples.All()); // the samples that are cut were loaded, too
        m_lineAxes.SetPoints(m_lineAxes.LongestLine());
        m_samples.ShortenLines(m_lineAxes.Points());
    }
    AnnounceReshape();
}

void CDataBuffer::RemoveEmptyLines()
{
    CHeldLines held = m_lineAxes.LinesWithSamples(m_lineAxes.MissingFrom());
    if (held.Count() < m_samples.Held().Count())
        m_samples.KeepLines(std::move(held));
}

void CDataBuffer::Restore(std::uint64_t points, std::uint64_t lines, std::map<std::uint64_t, CLineAxis> ownLineAxes,
                          std::uint64_t currentLine)
{
    CShape shape{CSampleBlock(points, lines, CHeldLines()), CLineAxes({points, 0, 0}, lines, std::move(ownLineAxes)),
                 currentLine};
    shape.lineAxes.SetMissingFrom(0);
    OnBeforeReshape.emit();
    {
        const std::lock_guard lock(m_mutex);
        Take(shape);
        m_notifications.Hold();
        m_notifications.HoldReshaped();
    }
}

CLineAxes CDataBuffer::GetLineAxes() const
{
    const std::lock_guard lock(m_mutex);
    return m_lineAxes;
}

std::uint64_t CDataBuffer::GetMissingLineCount() const
{
    const std::lock_guard lock(m_mutex);
    return m_lineAxes.Lines() - m_lineAxes.MissingFrom();
}

std::uint64_t CDataBuffer::GetStoredSampleCount() const
{
    const std::lock_guard lock(m_mutex);
    return m_samples.All().Count();
}

void CDataBuffer::TakeStorageToLoad(std::uint64_t bytesLeft)
{
    const SampleWidth width = WidthOfBits(m_bitCount);
    CHeldLines held = m_lineAxes.LinesWithSamples(m_lineAxes.Lines());
    if (const std::uint64_t lineBytes = m_lineAxes.Points() * BytesPerSample(width); lineBytes > 0)
        held.Truncate(std::min(bytesLeft / lineBytes, held.Count()));
    m_samples = CSampleBlock(m_lineAxes.Points(), m_lineAxes.Lines(), std::move(held), width);
}

// Result: whether no line is missing.
bool CDataBuffer::CountAsLoaded(std::size_t bytes)
{
    m_samples.KeepBytes(bytes);
    m_lineAxes.SetMissingFrom(m_samples.Held().End());
    m_lineStates.Reset(m_lineAxes.Lines(), m_samples.Held().End());
    m_latestFit.Forget();
    m_range.OweSamples();
    m_isEmpty = m_samples.All().Count() == 0;
    m_dataChanged = false;
    const bool isComplete = m_lineAxes.MissingFrom() == m_lineAxes.Lines();
    if (isComplete && m_bitCount != 32)
        m_bitCount = 16;
    return isComplete;
}

} // namespace veltaris::velflexlib::dataset
