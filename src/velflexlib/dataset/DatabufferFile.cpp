// What the serialisers need of a channel.
#include "velflexlib/dataset/Databuffer.h"

#include <algorithm>
#include <utility>

namespace veltaris::velflexlib::dataset {

void CDataBuffer::PrepareForSave()
{
    std::uint64_t longest = 0;
    {
        const std::lock_guard lock(m_mutex);
        if (m_ownLineAxes.size() < m_lineCount)
            return; // a line that has the channel's axis is as long as lines can be
        for (const auto& [line, axis] : m_ownLineAxes)
            longest = std::max(longest, axis.count);
        if (longest >= m_points)
            return;
    }
    OnBeforeReshape.emit();
    {
        const std::lock_guard lock(m_mutex);
        if (longest < m_points) {
            m_samples.ShortenLines(longest);
            m_points = longest;
        }
    }
    AnnounceReshape();
}

void CDataBuffer::SetLineAxes(std::map<std::uint64_t, CLineAxis> ownAxes, std::uint64_t currentLine)
{
    const std::lock_guard lock(m_mutex);
    std::erase_if(ownAxes, [&](const auto& own) { return own.first >= m_lineCount || own.second == CommonLineAxis(); });
    m_ownLineAxes = std::move(ownAxes);
    m_currentLine = currentLine;
}

std::map<std::uint64_t, CLineAxis> CDataBuffer::GetOwnLineAxes() const
{
    const std::lock_guard lock(m_mutex);
    return m_ownLineAxes;
}

std::vector<CSampleRun> CDataBuffer::GetSampleRuns() const
{
    const std::lock_guard lock(m_mutex);
    std::vector<CSampleRun> runs;
    std::uint64_t begin = 0;
    const auto endRunBefore = [&](std::uint64_t line) {
        if (line > begin && m_points > 0)
            runs.push_back({begin * m_points, (line - begin) * m_points});
        begin = line + 1;
    };
    for (const auto& [line, axis] : m_ownLineAxes) {
        if (axis.count == 0)
            endRunBefore(line);
    }
    endRunBefore(m_lineCount);
    return runs;
}

void CDataBuffer::FinishLoading()
{
    const std::vector<CSampleRun> runs = GetSampleRuns();
    const std::lock_guard lock(m_mutex);
    m_lineStates.ResetAll(m_lineCount, CLineStates::writtenWhole);
    m_dataRange = {};
    m_rangeLacksLoaded = true;
    m_isEmpty = runs.empty();
    m_dataChanged = false;
}

} // namespace veltaris::velflexlib::dataset
