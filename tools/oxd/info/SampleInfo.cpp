#include "oxd/info/SampleInfo.h"

#include "oxd/library/LineOperators.h"
#include "oxd/library/LineTally.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace oxd {

namespace {

// A sample has 30 bits, and one that is stored in 8 or 16 has only the highest of them: these below are zero.
constexpr std::uint32_t bitsBelow8 = (1U << 22) - 1;
constexpr std::uint32_t bitsBelow16 = (1U << 14) - 1;

// Gathers what depends on the samples, line by line.
class SampleStatistics
{
public:
    void Add(const std::vector<std::int32_t>& samples, const std::vector<double>& values)
    {
        for (const std::int32_t sample : samples) {
            m_bitsInUse |= static_cast<std::uint32_t>(sample);
        }
        for (const double value : values) {
            if (std::isfinite(value)) {
                m_range.min = std::min(m_range.min, value);
                m_range.max = std::max(m_range.max, value);
            }
        }
        m_count += samples.size();
    }

    SampleInfo Result() const
    {
        SampleInfo info{.validSamples = m_count};
        if (m_count > 0) {
            info.significantBits = (m_bitsInUse & bitsBelow8) == 0 ? 8 : (m_bitsInUse & bitsBelow16) == 0 ? 16 : 32;
        }
        if (m_range.min <= m_range.max) { // there were none if the axis gives no finite numbers
            info.values = m_range;
        }
        return info;
    }

private:
    std::uint64_t m_count = 0;
    std::uint32_t m_bitsInUse = 0;
    ValueRange m_range{std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity()};
};

LineTally ReadSamples(const Channel& channel, ChannelInfo& info)
{
    SampleStatistics statistics;
    LineTally unreadable;
    for (std::uint64_t line = 0; line < info.lines; ++line) {
        try {
            statistics.Add(channel.ReadRaw(line, rawData.code), channel.ReadReal(line, rawData.code));
        } catch (const LibraryError& error) {
            unreadable.Add(line, error.what());
        }
    }
    info.samples = statistics.Result();
    info.samples->unreadableLines = unreadable.Count();
    return unreadable;
}

} // namespace

void ReadAllSamples(FileInfo& info)
{
    const DataSet dataSet = DataSet::Open(info.file);
    for (GroupInfo& group : info.groups) {
        for (std::size_t slot = 0; slot < group.channels.size(); ++slot) {
            if (!group.channels[slot]) {
                continue;
            }
            const LineTally unreadable = ReadSamples(Channel(dataSet, group.id, slot), *group.channels[slot]);
            if (unreadable.Count() > 0) {
                info.problems.push_back("group " + std::to_string(group.id) + ", channel " + std::to_string(slot) +
                                        ": " + unreadable.Sentence("cannot be read"));
            }
        }
    }
    info.hasSamples = true;
}

} // namespace oxd
