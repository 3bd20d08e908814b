// The lines of a channel through a line operator, on their way to another file.
#pragma once

#include "oxd/library/Channel.h"
#include "oxd/library/LineOperators.h"
#include "oxd/library/LineTally.h"

#include <cstdint>
#include <vector>

namespace oxd {

class Progress;

class LineSource
{
public:
    LineSource(const Channel& channel, const LineOperator& lineOperator, Progress& progress)
        : m_channel(channel), m_operator(lineOperator), m_progress(&progress), m_points(channel.Points()),
          m_lines(channel.Lines())
    {
    }

    const Channel& GetChannel() const { return m_channel; }
    std::uint64_t Points() const { return m_points; }
    std::uint64_t Lines() const { return m_lines; }

    // What there is of a line. A line that gives nothing, though it has samples, is tallied.
    std::vector<std::int32_t> ReadRaw(std::uint64_t line) { return Read(line, &Channel::ReadRaw); }

    // As long as every line; NaN where there is no number.
    std::vector<double> ReadReal(std::uint64_t line);

    const LineTally& TooShort() const { return m_tooShort; }
    const LineTally& Damaged() const { return m_damaged; }

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
    LineTally m_tooShort;
    LineTally m_damaged;
};

} // namespace oxd
