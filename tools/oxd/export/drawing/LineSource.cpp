#include "oxd/export/drawing/LineSource.h"

#include "oxd/system/Progress.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>

namespace oxd {

template <typename Sample>
std::vector<Sample> LineSource::Read(std::uint64_t line, Reader<Sample> read)
{
    m_progress->Advance();
    try {
        std::vector<Sample> samples = (m_channel.*read)(line, m_operator.code);
        if (samples.empty() && m_channel.ValidPoints(line) > 0) {
            m_skipped.AddTooShort(line);
        }
        return samples;
    } catch (const LibraryError& error) {
        m_skipped.damaged.Add(line, error.what());
        return {};
    }
}

template std::vector<std::int32_t> LineSource::Read(std::uint64_t line, Reader<std::int32_t> read);

std::vector<double> LineSource::ReadReal(std::uint64_t line)
{
    constexpr double missing = std::numeric_limits<double>::quiet_NaN();
    const auto isNumber = [](double value) { return std::isfinite(value); };
    std::vector<double> values = Read(line, &Channel::ReadReal);
    m_hasSamples = m_hasSamples || !values.empty();
    m_hasValues = m_hasValues || std::any_of(values.begin(), values.end(), isNumber);
    std::replace_if(values.begin(), values.end(), std::not_fn(isNumber), missing);
    values.resize(m_points, missing);
    return values;
}

std::vector<double> LineSource::ReadShown(std::uint64_t line)
{
    constexpr double shareOfZero = 536870912.0 / 1073741823.0; // where raw samples of 30 bits are 0
    std::vector<double> values = ReadReal(line);
    if (IsDerived()) {
        const Axis axis = m_channel.ReadAxis(signalAxis);
        const double zero = axis.min + axis.range * shareOfZero;
        std::transform(values.begin(), values.end(), values.begin(), [zero](double value) { return value - zero; });
    }
    return values;
}

Axis LineSource::SignalAxis() const
{
    Axis axis = m_channel.ReadAxis(signalAxis);
    if (!axis.unit.empty()) {
        axis.unit += m_operator.unitEnd;
    }
    return axis;
}

std::string LineSource::NothingToShow() const
{
    return m_hasSamples ? "the channel has no finite value" : "the channel has no samples to show";
}

} // namespace oxd
