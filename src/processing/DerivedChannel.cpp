#include "processing/DerivedChannel.h"

#include "velflexlib/dataset/samples/SampleCodec.h"
#include "velstdlib/string/NumberText.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <utility>

namespace veltaris::processing {

namespace dataset = velflexlib::dataset;
using dataset::CAxis;
using dataset::CDataBuffer;
using dataset::CLineAxis;
using dataset::CSignalScale;
using dataset::RealToRawMode;

namespace {

constexpr std::int64_t bits = 32;

// The number that a file gives back for this one.
double Written(double number)
{
    return velstdlib::string::ParseNumber<double>(velstdlib::string::FormatDouble(number));
}

CSignalScale ScaleOf(const std::vector<double>& values)
{
    double low = std::numeric_limits<double>::infinity();
    double high = -low;
    for (const double value : values) {
        low = std::fmin(low, value);
        high = std::fmax(high, value);
    }
    return low > high ? CSignalScale{0, 1} : ScaleAround(low, high);
}

// What a derived channel is beside its samples.
struct Shape
{
    std::uint64_t points = 0; // of the longest line
    CAxis pointAxis;
    CAxis signalAxis;
    std::vector<CLineAxis> lines; // the point axis of each
};

std::map<std::uint64_t, CLineAxis> OwnAxes(const Shape& shape)
{
    const CLineAxis common{shape.points, shape.pointAxis.min, shape.pointAxis.range};
    std::map<std::uint64_t, CLineAxis> own;
    for (std::uint64_t line = 0; line < shape.lines.size(); ++line) {
        if (shape.lines[line] != common)
            own.emplace_hint(own.end(), line, shape.lines[line]);
    }
    return own;
}

// Stores each line with valid points as a row, padded with zeros. `samples` has the valid points alone.
void StoreRows(const Shape& shape, std::span<const std::int32_t> samples, std::span<std::byte> rows)
{
    constexpr auto width = dataset::SampleWidth::Bits32;
    std::fill(rows.begin(), rows.end(), std::byte{0});
    for (const CLineAxis& line : shape.lines) {
        if (line.count == 0)
            continue;
        dataset::EncodeSamples(samples.first(line.count), width, rows.data());
        samples = samples.subspan(line.count);
        rows = rows.subspan(shape.points * dataset::BytesPerSample(width));
    }
}

void Fill(CDataBuffer& channel, const CDataBuffer& input, const Shape& shape, std::span<const std::int32_t> samples)
{
    channel.SetBitCount(bits);
    channel.Restore(shape.points, shape.lines.size(), OwnAxes(shape), 0);
    channel.SetAxis(dataset::pointAxis, shape.pointAxis);
    channel.SetAxis(dataset::lineAxis, input.GetAxis(dataset::lineAxis));
    channel.SetAxis(dataset::signalAxis, shape.signalAxis);
    channel.LoadSamples(std::numeric_limits<std::uint64_t>::max(),
                        [&](std::span<std::byte> rows, dataset::SampleWidth, std::size_t& filled) {
                            StoreRows(shape, samples, rows);
                            filled = rows.size();
                        });
}

} // namespace

// The margin is more than what rounding to 6 digits takes.
CSignalScale ScaleAround(double low, double high)
{
    const double margin = std::max(0.05 * (high - low), 1e-4 * std::max(std::fabs(low), std::fabs(high)));
    if (margin == 0 || !std::isfinite(margin))
        return {0, 1}; // which holds a 0 exactly
    const double min = Written(low - margin);
    return {min, Written(high + margin - min)};
}

void CDerivedCurves::Add(std::span<const double> values, const curves::CAxis& axis, curves::Reason reason)
{
    const auto isNumber = [](double value) { return !std::isnan(value); };
    const auto first = std::ranges::find_if(values, isNumber);
    const auto end = std::ranges::find_if_not(first, values.end(), isNumber);
    const auto count = static_cast<std::size_t>(end - first);
    const std::size_t before = samples.size();
    samples.resize(before + count);
    scale.ToRaw({first, end}, RealToRawMode::SignalAxis, samples.data() + before);
    lines.push_back({count, axis.PositionOf(static_cast<double>(first - values.begin())), axis.step});
    reasons.push_back(reason);
}

void Store(const CDerivedValues& values, const CDataBuffer& input, CDataBuffer& channel)
{
    const CSignalScale scale = ScaleOf(values.values);
    Shape shape{1, {"Value", "", 0, 0}, {values.name, values.unit, scale.min, scale.range}, {}};
    std::vector<std::int32_t> samples;
    for (const double value : values.values) {
        const bool isThere = !std::isnan(value);
        shape.lines.push_back({isThere ? 1U : 0U, 0, 0});
        if (isThere)
            samples.push_back(*scale.ToRaw(value, RealToRawMode::SignalAxis));
    }
    Fill(channel, input, shape, samples);
}

// A line spans all points that the longest one has, also where it has fewer itself.
void Store(const CDerivedCurves& derived, const CDataBuffer& input, CDataBuffer& channel)
{
    Shape shape;
    for (const CDerivedCurves::Line& line : derived.lines)
        shape.points = std::max(shape.points, line.count);
    const double steps = shape.points < 2 ? 1 : static_cast<double>(shape.points - 1);
    shape.pointAxis = input.GetAxis(dataset::pointAxis);
    shape.pointAxis.range *= steps / static_cast<double>(std::max<std::uint64_t>(input.GetPoints(), 2) - 1);
    shape.signalAxis = {derived.name, derived.unit, derived.scale.min, derived.scale.range};
    for (const CDerivedCurves::Line& line : derived.lines)
        shape.lines.push_back(line.count == 0 ? CLineAxis{0, shape.pointAxis.min, shape.pointAxis.range}
                                              : CLineAxis{line.count, line.start, line.step * steps});
    Fill(channel, input, shape, derived.samples);
}

} // namespace veltaris::processing
