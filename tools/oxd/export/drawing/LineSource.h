// Reads the lines of a channel through a line operator for a file that is exported, and keeps account of the lines
// that gave nothing.
#pragma once

#include "oxd/library/Channel.h"
#include "oxd/library/LineOperators.h"
#include "oxd/library/LineTally.h"

#include <cstdint>
#include <string>
#include <vector>

namespace oxd {

class Progress;

// Each line that is read advances the progress by one step. A line that is read twice is also tallied twice, so a
// writer that needs two passes makes the first one with a copy. The data set of the channel and the progress must
// outlive the source.
class LineSource
{
public:
    LineSource(const Channel& channel, const LineOperator& lineOperator, Progress& progress)
        : m_channel(channel), m_operator(lineOperator), m_progress(&progress), m_points(channel.Points()),
          m_lines(channel.Lines())
    {
    }

    const Channel& GetChannel() const { return m_channel; }

    // Whether the operator's outcome is in another unit than the samples, as differences are.
    bool IsDerived() const { return m_operator.unitEnd != rawData.unitEnd; }

    // The signal axis of what is read: its unit is that of the operator's outcome.
    Axis SignalAxis() const;
    std::uint64_t Points() const { return m_points; }
    std::uint64_t Lines() const { return m_lines; }

    // The valid samples of a line, at most Points() of them. Nothing and an entry among the skipped lines if they
    // cannot be read or are too few for the operator; a line without any valid sample is no entry.
    std::vector<std::int32_t> ReadRaw(std::uint64_t line) { return Read(line, &Channel::ReadRaw); }

    // The same in the unit of the signal axis. There are always Points() values: NaN stands where there is no sample,
    // or none that is finite.
    std::vector<double> ReadReal(std::uint64_t line);

    // The same as pictures show it. The interface turns differences into values as it does samples, so that none at all
    // is the middle of the signal axis: here it is 0.
    std::vector<double> ReadShown(std::uint64_t line);

    const SkippedLines& Skipped() const { return m_skipped; }

    // Whether ReadReal has given a number so far, and what to say if all lines have given none.
    bool HasValues() const { return m_hasValues; }
    std::string NothingToShow() const;

private:
    template <typename Sample>
    using Reader = std::vector<Sample> (Channel::*)(std::uint64_t line, std::int32_t lineOperator) const;

    template <typename Sample>
    std::vector<Sample> Read(std::uint64_t line, Reader<Sample> read);

    Channel m_channel;
    LineOperator m_operator;
    Progress* m_progress;
    std::uint64_t m_points;
    std::uint64_t m_lines;
    SkippedLines m_skipped;
    bool m_hasSamples = false;
    bool m_hasValues = false;
};

} // namespace oxd
