#include "processing/CurveReader.h"

#include "velflexlib/dataset/operators/LineOperatorTable.h"
#include "velflexlib/dataset/samples/SampleCodec.h"
#include "velflexlib/dataset/samples/SignalScale.h"
#include "velflexlib/dataset/samples/kernels/RawRange.h"

#include <algorithm>
#include <cmath>

namespace veltaris::processing {

namespace dataset = velflexlib::dataset;

CCurveReader::CCurveReader(const dataset::CDataBuffer& channel) : m_channel(channel), m_signal(channel.GetPoints())
{
}

CReading CCurveReader::Read(std::uint64_t line)
{
    const dataset::CLineAxis axis = m_channel.GetLineAxis(line);
    const auto& asStored = dataset::GetLineOperator(dataset::LineOpID::RawData);
    const bool isRead = m_channel.ReadLineReal(line, asStored, m_signal.data());
    const std::size_t acquired = isRead ? static_cast<std::size_t>(axis.count) : 0;
    std::fill(m_signal.begin() + static_cast<std::ptrdiff_t>(acquired), m_signal.end(), curves::noValue);
    const double steps = m_signal.size() < 2 ? 1 : static_cast<double>(m_signal.size() - 1);
    return {{m_signal, {axis.min, axis.range / steps}}, isRead ? curves::Reason::None : curves::Reason::Unreadable};
}

bool HasUsableSignal(const dataset::CDataBuffer& channel)
{
    constexpr double largest = 1e150; // beyond which a signal counts as not acquired
    const dataset::CAxis axis = channel.GetAxis(dataset::signalAxis);
    return std::fabs(axis.min) <= largest && std::fabs(axis.range) <= largest && axis.range != 0;
}

curves::CCurveOptions OptionsOf(const dataset::CDataBuffer& channel)
{
    dataset::SampleWidth width{};
    channel.AccessSamples([&](const dataset::CSampleBlock& samples) { width = samples.Width(); });
    const int lostBits = std::max(0, -dataset::SpareBits(width));
    const std::int32_t highest = (dataset::highestRaw >> lostBits) << lostBits;

    const dataset::CAxis axis = channel.GetAxis(dataset::signalAxis);
    const dataset::CSignalScale scale{axis.min, axis.range};
    const auto [low, high] = std::minmax({scale.ToReal(dataset::lowestRaw), scale.ToReal(highest)});
    curves::CCurveOptions options;
    options.limits = {low, high};
    options.signalStep = std::ldexp(std::fabs(axis.range) / dataset::rawSpan, lostBits);
    return options;
}

} // namespace veltaris::processing
