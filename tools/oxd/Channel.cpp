#include "Channel.h"

#include <algorithm>
#include <limits>

namespace oxd {

const AxisAccess pointAxis{GetChannelData_PointAxisName,  GetChannelData_PointAxisUnit, GetChannelData_PointAxisMin,
                           GetChannelData_PointAxisRange, SetChannelData_PointAxisName, SetChannelData_PointAxisUnit,
                           SetChannelData_PointAxisMin,   SetChannelData_PointAxisRange};

const AxisAccess lineAxis{GetChannelData_LineAxisName,  GetChannelData_LineAxisUnit, GetChannelData_LineAxisMin,
                          GetChannelData_LineAxisRange, SetChannelData_LineAxisName, SetChannelData_LineAxisUnit,
                          SetChannelData_LineAxisMin,   SetChannelData_LineAxisRange};

const AxisAccess signalAxis{GetChannelData_SignalAxisName, GetChannelData_SignalAxisUnit,
                            GetChannelData_SignalAxisMin,  GetChannelData_SignalAxisRange,
                            SetChannelData_SignalAxisName, SetChannelData_SignalAxisUnit,
                            SetChannelData_SignalAxisMin,  SetChannelData_SignalAxisRange};

namespace {

constexpr std::int32_t unchangedSamples = 0; // code of the line operator

// Outside the 30 bits of a sample, and no difference of two samples either: the library did not write here.
constexpr std::int32_t unwritten = std::numeric_limits<std::int32_t>::min();

} // namespace

Axis Channel::ReadAxis(const AxisAccess& axis) const
{
    return {Text(axis.getName), Text(axis.getUnit), Call(axis.getMin), Call(axis.getRange)};
}

void Channel::WriteAxis(const AxisAccess& axis, const Axis& values)
{
    Call(axis.setName, values.name.c_str());
    Call(axis.setUnit, values.unit.c_str());
    Call(axis.setMin, values.min);
    Call(axis.setRange, values.range);
}

std::uint64_t Channel::ValidPoints(std::uint64_t line) const
{
    const std::uint64_t valid = Call(GetChannelData_PointsPerLine, line);
    if (valid > Points()) {
        throw LibraryError("more valid points than points");
    }
    return valid;
}

std::vector<std::int32_t> Channel::ReadRaw(std::uint64_t line, std::int32_t lineOperator) const
{
    std::vector<std::int32_t> samples(ValidPoints(line), unwritten);
    if (samples.empty()) {
        return samples;
    }
    Call(GetChannelData_LineRaw, line, lineOperator, samples.data());
    samples.erase(std::find(samples.begin(), samples.end(), unwritten), samples.end());
    return samples;
}

std::vector<double> Channel::ReadReal(std::uint64_t line) const
{
    std::vector<double> values(ValidPoints(line));
    if (!values.empty()) {
        Call(GetChannelData_LineReal, line, unchangedSamples, values.data());
    }
    return values;
}

void Channel::WriteRaw(std::uint64_t line, const std::vector<std::int32_t>& samples)
{
    if (samples.size() == Points()) {
        Call(SetChannelData_LineRaw, line, samples.data());
        return;
    }
    for (std::size_t point = 0; point < samples.size(); ++point) {
        Call(SetChannelData_PixelRaw, point, line, samples[point]);
    }
}

} // namespace oxd
