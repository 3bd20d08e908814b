// What the serialisers need of a channel.
#include "velflexlib/dataset/channels/Databuffer.h"

#include <algorithm>
#include <utility>

namespace veltaris::velflexlib::dataset {

namespace {

std::vector<std::uint64_t> LinesWithoutSamples(const std::map<std::uint64_t, CLineAxis>& ownLineAxes)
{
    std::vector<std::uint64_t> lines;
    for (const auto& [line, axis] : ownLineAxes) {
        if (axis.count == 0)
            lines.push_back(line);
    }
    return lines;
}

} // namespace

// A line that has the channel's axis is as long as lines can be.
std::uint64_t CDataBuffer::LongestLine() const
{
    if (m_ownLineAxes.size() < m_lineCount)
        return m_points;
    std::uint64_t longest = 0;
    for (const auto& [line, axis] : m_ownLineAxes)
        longest = std::max(longest, axis.count);
    return std::min(longest, m_points);
}

void CDataBuffer::PrepareForSave()
{
    {
        const std::lock_guard lock(m_mutex);
        RemoveEmptyLines();
        if (LongestLine() == m_points)
            return;
    }
    OnBeforeReshape.emit();
    {
        const std::lock_guard lock(m_mutex);
        RemoveEmptyLines(); // both again: a slot may have written lines
        m_points = LongestLine();
        m_samples.ShortenLines(m_points);
        m_latestFit = {};
    }
    AnnounceReshape();
}

// When one line without storage is written all of them get some, so that writing them one by one moves the samples
// once.
void CDataBuffer::RemoveEmptyLines()
{
    auto empty = LinesWithoutSamples(m_ownLineAxes);
    if (empty.size() > m_samples.AbsentCount())
        m_samples.RemoveLines(std::move(empty));
}

void CDataBuffer::Restore(std::uint64_t points, std::uint64_t lines, std::map<std::uint64_t, CLineAxis> ownLineAxes,
                          std::uint64_t currentLine)
{
    CSampleBlock samples(points, lines, WidthOfBits(GetBitCount()), LinesWithoutSamples(ownLineAxes));
    CShape shape{std::move(samples), points, lines, std::move(ownLineAxes), currentLine};
    OnBeforeReshape.emit();
    {
        const std::lock_guard lock(m_mutex);
        Take(shape);
    }
    AnnounceReshape();
}

CLineAxis CDataBuffer::GetCommonLineAxis() const
{
    const std::lock_guard lock(m_mutex);
    return CommonLineAxis();
}

std::map<std::uint64_t, CLineAxis> CDataBuffer::GetOwnLineAxes() const
{
    const std::lock_guard lock(m_mutex);
    return m_ownLineAxes;
}

std::uint64_t CDataBuffer::GetStoredSampleCount() const
{
    const std::lock_guard lock(m_mutex);
    return m_samples.All().Count();
}

void CDataBuffer::CountAsLoaded()
{
    m_lineStates.ResetAll(m_lineCount, CLineStates::writtenWhole);
    m_latestFit = {};
    m_dataRange = {};
    m_rangeLacksLoaded = true;
    m_isEmpty = m_samples.All().Count() == 0;
    m_dataChanged = false;
}

} // namespace veltaris::velflexlib::dataset
