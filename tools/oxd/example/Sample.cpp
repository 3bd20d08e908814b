#include "oxd/example/Sample.h"

#include "oxd/example/SampleCurve.h"
#include "oxd/example/SampleInfo.h"
#include "oxd/example/SampleScan.h"
#include "oxd/example/SampleSettings.h"
#include "oxd/inspection/InsertIntoHeader.h"
#include "oxd/library/Channel.h"

#include <array>
#include <span>

namespace oxd {

namespace {

// A channel of the sample: its signal axis and what gives its values. The axis is symmetric, so that a line operator
// that levels the samples centres them on 0.
template <typename Source>
struct Signal
{
    Axis axis;
    double (Source::*value)(double position);
};

using ScanSignal = Signal<SampleScan>;
using CurveSignal = Signal<SampleCurve>;

const std::array scanSignals{
    ScanSignal{{"Topography", "m", -50e-9, 100e-9}, &SampleScan::Topography},
    ScanSignal{{"Deflection", "V", -0.5, 1}, &SampleScan::Deflection},
    ScanSignal{{"Phase", "°", -180, 360}, &SampleScan::Phase},
};

const std::array curveSignals{
    CurveSignal{{"Approach", "m", -200e-9, 400e-9}, &SampleCurve::Approach},
    CurveSignal{{"Retract", "m", -200e-9, 400e-9}, &SampleCurve::Retract},
};

// The backward scan trails by about three pixels.
constexpr std::array scanDirections{
    ScanDirection{"ForwardScan", 1, 0, 1},
    ScanDirection{"BackwardScan", 2, 60e-9, -1},
};

constexpr std::uint32_t curveSeed = 3;

struct Grid
{
    Axis pointAxis;
    Axis lineAxis;
    int points = 0;
    int lines = 0;
};

const Grid scanGrid{{"X", "m", 0, scanSize}, {"Y", "m", 0, scanSize}, scanPixels, scanPixels};
const Grid curveGrid{{"Z", "m", 0, rampSize}, {"Curve", "", 0, 15}, 512, 16};

double Position(const Axis& axis, int index, int count)
{
    return axis.min + axis.range * index / (count - 1);
}

template <typename Source>
std::vector<Channel> MakeGroup(const DataSet& dataSet, const char* name, std::int32_t bits, const Grid& grid,
                               std::span<const Signal<Source>> signals)
{
    const std::uint64_t group = dataSet.Call(CreateGroup, bits);
    dataSet.Call(SetGroupName, group, name);
    dataSet.Call(SetChannelCount, group, signals.size());
    std::vector<Channel> channels;
    for (const Signal<Source>& signal : signals) {
        Channel& channel = channels.emplace_back(dataSet, group, channels.size());
        channel.Resize(static_cast<std::uint64_t>(grid.points), static_cast<std::uint64_t>(grid.lines));
        channel.WriteAxis(pointAxis, grid.pointAxis);
        channel.WriteAxis(lineAxis, grid.lineAxis);
        channel.WriteAxis(signalAxis, signal.axis);
    }
    return channels;
}

// Writes one line of all channels of a group.
template <typename Source>
void WriteLines(std::vector<Channel>& channels, int line, const Grid& grid, std::span<const Signal<Source>> signals,
                Source& source)
{
    std::vector<double> values(static_cast<std::size_t>(grid.points));
    for (std::size_t i = 0; i < signals.size(); ++i) {
        for (int point = 0; point < grid.points; ++point) {
            const double position = Position(grid.pointAxis, point, grid.points);
            values[static_cast<std::size_t>(point)] = (source.*signals[i].value)(position);
        }
        channels[i].WriteReal(static_cast<std::uint64_t>(line), values);
    }
}

void AddScan(const DataSet& dataSet, const ScanDirection& direction)
{
    constexpr std::int32_t bits = 16;
    const std::span<const ScanSignal> signals = scanSignals;
    std::vector<Channel> channels = MakeGroup(dataSet, direction.group, bits, scanGrid, signals);
    SampleScan scan(direction);
    for (int line = 0; line < scanGrid.lines; ++line) {
        scan.StartLine(Position(scanGrid.lineAxis, line, scanGrid.lines));
        WriteLines(channels, line, scanGrid, signals, scan);
    }
}

void AddCurves(const DataSet& dataSet)
{
    constexpr std::int32_t bits = 32;
    const std::span<const CurveSignal> signals = curveSignals;
    std::vector<Channel> channels = MakeGroup(dataSet, "Spectroscopy", bits, curveGrid, signals);
    Noise noise(curveSeed);
    for (int line = 0; line < curveGrid.lines; ++line) {
        SampleCurve curve(line, noise);
        WriteLines(channels, line, curveGrid, signals, curve);
    }
}

} // namespace

void MakeSample(const Destination& destination)
{
    OutputFile output(destination);
    DataSet dataSet = DataSet::Create();
    for (const ScanDirection& direction : scanDirections) {
        AddScan(dataSet, direction);
    }
    AddCurves(dataSet);
    AddSampleInfo(dataSet);
    InsertIntoHeader(output, dataSet.SaveTo(output), SampleSettings());
    output.Close();
}

} // namespace oxd
