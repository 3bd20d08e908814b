#include "oxd/library/Channel.h"

#include <algorithm>
#include <bit>
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

// Marks a place in a buffer to which the library has not written. No raw value is this low: it is outside the 30 bits
// of a sample, and outside the differences of two samples. A real value may be any number, but no calculation gives a
// NaN with these bits.
template <typename Sample>
constexpr Sample unwritten = std::numeric_limits<Sample>::lowest();
template <>
constexpr double unwritten<double> = std::bit_cast<double>(std::uint64_t{0x7FF8'6F78'645F'6E6F});

bool IsUnwritten(std::int32_t sample)
{
    return sample == unwritten<std::int32_t>;
}

bool IsUnwritten(double value)
{
    return std::bit_cast<std::uint64_t>(value) == std::bit_cast<std::uint64_t>(unwritten<double>);
}

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

AxisSpan Channel::PointSpan(std::uint64_t line) const
{
    return {Call(GetChannelData_PointAxisMinPerLine, line), Call(GetChannelData_PointAxisRangePerLine, line)};
}

bool Channel::HasOwnPointAxis(std::uint64_t line) const
{
    const AxisSpan own = PointSpan(line);
    return own.min != Call(pointAxis.getMin) || own.range != Call(pointAxis.getRange);
}

template <typename Sample>
std::vector<Sample> Channel::Read(void (*function)(std::uint64_t, std::uint64_t, std::uint64_t, std::uint64_t,
                                                   std::int32_t, Sample*),
                                  std::uint64_t line, std::int32_t lineOperator) const
{
    std::vector<Sample> samples(ValidPoints(line), unwritten<Sample>);
    if (samples.empty()) {
        return samples;
    }
    Call(function, line, lineOperator, samples.data());
    samples.erase(std::find_if(samples.begin(), samples.end(), [](Sample sample) { return IsUnwritten(sample); }),
                  samples.end());
    return samples;
}

std::vector<std::int32_t> Channel::ReadRaw(std::uint64_t line, std::int32_t lineOperator) const
{
    return Read(GetChannelData_LineRaw, line, lineOperator);
}

std::vector<double> Channel::ReadReal(std::uint64_t line, std::int32_t lineOperator) const
{
    return Read(GetChannelData_LineReal, line, lineOperator);
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
