#include "oxd/compare/CompareChannels.h"

#include <algorithm>
#include <array>

namespace oxd {

namespace {

struct NamedAxis
{
    const AxisAccess& access;
    const char* name;
};

// One of the two numbers of an axis.
struct AxisNumber
{
    double Axis::*ofChannel;
    double AxisSpan::*ofLine;
    const char* name;
};

constexpr std::array axisNumbers{
    AxisNumber{&Axis::min, &AxisSpan::min, "min of the "},
    AxisNumber{&Axis::range, &AxisSpan::range, "range of the "},
};

void CompareAxis(const NamedAxis& axis, const ChannelPair& channels, Recorder& recorder)
{
    const Axis a = channels.a.ReadAxis(axis.access);
    const Axis b = channels.b.ReadAxis(axis.access);
    const std::string name = axis.name;
    recorder.Compare(Aspect::Axes, "name of the " + name, channels.place, a.name, b.name);
    recorder.Compare(Aspect::Axes, "unit of the " + name, channels.place, a.unit, b.unit);
    for (const AxisNumber& number : axisNumbers) {
        const double ofA = a.*number.ofChannel;
        const double ofB = b.*number.ofChannel;
        if (!AreSame(ofA, ofB, 0, recorder.Options().tolerance)) {
            recorder.Differ(Aspect::Axes, number.name + name, channels.place, ofA, ofB);
        }
    }
}

// A line without a point axis of its own has that of its channel, which is compared already.
void CompareLineAxes(const AxisNumber& number, const ChannelPair& channels, Recorder& recorder)
{
    Difference difference{Aspect::Axes, number.name + std::string("point axis"), channels.place};
    const std::uint64_t lines = std::min(channels.a.Lines(), channels.b.Lines());
    for (std::uint64_t line = 0; line < lines; ++line) {
        if (!channels.a.HasOwnPointAxis(line) && !channels.b.HasOwnPointAxis(line)) {
            continue;
        }
        const double a = channels.a.PointSpan(line).*number.ofLine;
        const double b = channels.b.PointSpan(line).*number.ofLine;
        if (!AreSame(a, b, 0, recorder.Options().tolerance)) {
            difference.Add({.line = line, .a = a, .b = b}, Distance(a, b), recorder.Options().shownAtMost);
        }
    }
    recorder.Add(std::move(difference));
}

} // namespace

void CompareSizes(const ChannelPair& channels, Recorder& recorder)
{
    recorder.Compare(Aspect::Structure, "points", channels.place, channels.a.Points(), channels.b.Points());
    recorder.Compare(Aspect::Structure, "lines", channels.place, channels.a.Lines(), channels.b.Lines());
    recorder.Compare(Aspect::Bits, "bits as stored", channels.place, static_cast<std::uint64_t>(channels.bitsOfA),
                     static_cast<std::uint64_t>(channels.bitsOfB));
}

void CompareAxes(const ChannelPair& channels, Recorder& recorder)
{
    if (!recorder.Wants(Aspect::Axes)) {
        return;
    }
    for (const NamedAxis& axis :
         {NamedAxis{signalAxis, "signal axis"}, NamedAxis{pointAxis, "point axis"}, NamedAxis{lineAxis, "line axis"}}) {
        CompareAxis(axis, channels, recorder);
    }
    for (const AxisNumber& number : axisNumbers) {
        CompareLineAxes(number, channels, recorder);
    }
}

} // namespace oxd
