// The exported functions that work on an open file. Each checks its arguments in the order of the header's conventions,
// calls one operation of the data set and copies the result out.
#include "VELOxdDll.h"

#include "api/Boundary.h"
#include "api/FileManager.h"
#include "velflexlib/dataset/LineOperator.h"

#include <algorithm>
#include <span>
#include <vector>

namespace dataset = veltaris::velflexlib::dataset;
using dataset::CDataBuffer;
using dataset::CDataSet;
using dataset::RealToRawMode;

namespace {

constexpr std::uint64_t largestDimension = 65536; // that the setters of a single dimension take

CDataSet& DataSetOf(std::uint64_t handle)
{
    return GetFileHandleStruct(handle).dataSet;
}

// The span of a whole line in the caller's memory, when there is such a line.
template <class Value>
std::span<const Value> LineToStore(const CCall& call, const CDataBuffer& buffer, std::uint64_t line,
                                   const Value* values)
{
    call.Done(line < buffer.GetLines());
    call.NotNull(values);
    return {values, buffer.GetPoints()};
}

std::vector<std::int32_t> CorrectedLine(const CCall& call, const CDataBuffer& buffer, std::uint64_t line,
                                        std::int32_t lineOp)
{
    const auto lineOperator = dataset::CreateLineOperator(dataset::LineOpFromCode(lineOp));
    std::vector<std::int32_t> corrected;
    call.Done(buffer.ReadLine(line, [&](auto samples) { lineOperator->Apply(corrected, samples); }));
    return corrected;
}

std::int32_t CorrectedPixel(const CCall& call, const CDataBuffer& buffer, std::uint64_t point, std::uint64_t line,
                            std::int32_t lineOp)
{
    const auto corrected = CorrectedLine(call, buffer, line, lineOp);
    call.Done(point < corrected.size());
    return corrected[point];
}

} // namespace

uint64_t GetGroupCount(uint64_t handle)
{
    return Export([&](const CCall&) -> uint64_t { return DataSetOf(handle).GetGroupCount(); });
}

void GetAllGroupIds(uint64_t handle, uint64_t* ids)
{
    Export([&](const CCall& call) {
        const auto allIds = DataSetOf(handle).GetAllGroupIds();
        call.NotNull(ids);
        std::ranges::transform(allIds, ids, [](int id) { return static_cast<uint64_t>(id); });
    });
}

uint64_t CreateGroup(uint64_t handle, int32_t bitCount)
{
    return Export([&](const CCall&) { return static_cast<uint64_t>(DataSetOf(handle).CreateGroup({}, bitCount)); });
}

uint64_t GetGroupId(uint64_t handle, const char* name)
{
    return Export("get group index", [&](const CCall& call) {
        const CDataSet& dataSet = DataSetOf(handle);
        const int id = dataSet.GetGroupId(call.Text(name));
        if (id < 0)
            call.Fail("No group with given name available. Index: ", name);
        return static_cast<uint64_t>(id);
    });
}

void DeleteGroup(uint64_t handle, uint64_t group)
{
    Export("delete group", [&](const CCall& call) {
        call.Group(handle, group);
        call.Done(DataSetOf(handle).DeleteGroup(group));
    });
}

void DeleteAllGroups(uint64_t handle)
{
    Export([&](const CCall&) { DataSetOf(handle).DeleteAllGroups(); });
}

uint64_t GetLogicalGroupId(uint64_t handle, uint64_t group)
{
    return Export("get logical group id",
                  [&](const CCall& call) -> uint64_t { return call.Group(handle, group)->GetLogicalGroupId(); });
}

void SetLogicalGroupId(uint64_t handle, uint64_t group, uint64_t id)
{
    Export("set logical group id",
           [&](const CCall& call) { call.Group(handle, group)->SetLogicalGroupId(static_cast<std::uint32_t>(id)); });
}

void GetGroupName(uint64_t handle, uint64_t group, char* buffer, uint64_t size)
{
    Export("get group name",
           [&](const CCall& call) { call.CopyText(call.Group(handle, group)->GetName(), buffer, size); });
}

void SetGroupName(uint64_t handle, uint64_t group, const char* name)
{
    Export("set group name", [&](const CCall& call) { call.Group(handle, group)->SetName(call.Text(name)); });
}

// The action is the getter's: callers know the text.
void SetChannelCount(uint64_t handle, uint64_t group, uint64_t count)
{
    Export("get channel count", [&](const CCall& call) { call.Group(handle, group)->SetChannelCount(count); });
}

uint64_t GetChannelCount(uint64_t handle, uint64_t group)
{
    return Export("get channel count",
                  [&](const CCall& call) -> uint64_t { return call.Group(handle, group)->GetChannelCount(); });
}

bool HasChannelBuffer(uint64_t handle, uint64_t group, uint64_t channel)
{
    return Export("evaluate channel", [&](const CCall& call) {
        return call.GroupWithSlot(handle, group, channel)->GetChannelBuffer(channel) != nullptr;
    });
}

void DeleteChannelBuffer(uint64_t handle, uint64_t group, uint64_t channel)
{
    Export("delete channel", [&](const CCall& call) {
        call.Channel(handle, group, channel);
        call.Group(handle, group)->DeleteChannelBuffer(channel);
    });
}

void SetChannelXYDimension(uint64_t handle, uint64_t group, uint64_t channel, uint64_t points, uint64_t lines)
{
    Export("set channel xy dimension", [&](const CCall& call) {
        call.GroupWithSlot(handle, group, channel)->GetOrCreateChannelBuffer(channel, points, lines);
    });
}

void SetChannelData_Points(uint64_t handle, uint64_t group, uint64_t channel, uint64_t points)
{
    Export("set channel points", [&](const CCall& call) {
        call.AtMost(largestDimension, points);
        const auto buffer = call.Channel(handle, group, channel);
        buffer->SetXYDimension(points, buffer->GetLines());
    });
}

uint64_t GetChannelData_Points(uint64_t handle, uint64_t group, uint64_t channel)
{
    return Export("get channel points",
                  [&](const CCall& call) { return call.Channel(handle, group, channel)->GetPoints(); });
}

uint64_t GetChannelData_PointsPerLine(uint64_t handle, uint64_t group, uint64_t channel, uint64_t line)
{
    return Export("get channel points",
                  [&](const CCall& call) { return call.Channel(handle, group, channel)->GetLineAxis(line).count; });
}

void SetChannelData_Lines(uint64_t handle, uint64_t group, uint64_t channel, uint64_t lines)
{
    Export("set channel lines", [&](const CCall& call) {
        call.AtMost(largestDimension, lines);
        const auto buffer = call.Channel(handle, group, channel);
        buffer->SetXYDimension(buffer->GetPoints(), lines);
    });
}

uint64_t GetChannelData_Lines(uint64_t handle, uint64_t group, uint64_t channel)
{
    return Export("get channel lines",
                  [&](const CCall& call) { return call.Channel(handle, group, channel)->GetLines(); });
}

void SetChannelData_PointAxisName(uint64_t handle, uint64_t group, uint64_t channel, const char* name)
{
    Export("set channel point axis name", [&](const CCall& call) {
        call.Channel(handle, group, channel)->SetAxisName(dataset::pointAxis, call.Text(name));
    });
}

void GetChannelData_PointAxisName(uint64_t handle, uint64_t group, uint64_t channel, char* buffer, uint64_t size)
{
    Export("get channel point axis name", [&](const CCall& call) {
        call.CopyText(call.Channel(handle, group, channel)->GetAxis(dataset::pointAxis).name, buffer, size);
    });
}

void SetChannelData_PointAxisUnit(uint64_t handle, uint64_t group, uint64_t channel, const char* unit)
{
    Export("set channel point axis unit", [&](const CCall& call) {
        call.Channel(handle, group, channel)->SetAxisUnit(dataset::pointAxis, call.Text(unit));
    });
}

void GetChannelData_PointAxisUnit(uint64_t handle, uint64_t group, uint64_t channel, char* buffer, uint64_t size)
{
    Export("get channel point axis unit", [&](const CCall& call) {
        call.CopyText(call.Channel(handle, group, channel)->GetAxis(dataset::pointAxis).unit, buffer, size);
    });
}

void SetChannelData_PointAxisMin(uint64_t handle, uint64_t group, uint64_t channel, double min)
{
    Export("set channel point axis min",
           [&](const CCall& call) { call.Channel(handle, group, channel)->SetAxisMin(dataset::pointAxis, min); });
}

double GetChannelData_PointAxisMin(uint64_t handle, uint64_t group, uint64_t channel)
{
    return Export("get channel point axis min", [&](const CCall& call) {
        return call.Channel(handle, group, channel)->GetAxis(dataset::pointAxis).min;
    });
}

double GetChannelData_PointAxisMinPerLine(uint64_t handle, uint64_t group, uint64_t channel, uint64_t line)
{
    return Export("get channel point axis min",
                  [&](const CCall& call) { return call.Channel(handle, group, channel)->GetLineAxis(line).min; });
}

void SetChannelData_PointAxisRange(uint64_t handle, uint64_t group, uint64_t channel, double range)
{
    Export("set channel point axis range",
           [&](const CCall& call) { call.Channel(handle, group, channel)->SetAxisRange(dataset::pointAxis, range); });
}

double GetChannelData_PointAxisRange(uint64_t handle, uint64_t group, uint64_t channel)
{
    return Export("get channel point axis range", [&](const CCall& call) {
        return call.Channel(handle, group, channel)->GetAxis(dataset::pointAxis).range;
    });
}

double GetChannelData_PointAxisRangePerLine(uint64_t handle, uint64_t group, uint64_t channel, uint64_t line)
{
    return Export("get channel point axis range",
                  [&](const CCall& call) { return call.Channel(handle, group, channel)->GetLineAxis(line).range; });
}

void SetChannelData_LineAxisName(uint64_t handle, uint64_t group, uint64_t channel, const char* name)
{
    Export("set channel line axis name", [&](const CCall& call) {
        call.Channel(handle, group, channel)->SetAxisName(dataset::lineAxis, call.Text(name));
    });
}

void GetChannelData_LineAxisName(uint64_t handle, uint64_t group, uint64_t channel, char* buffer, uint64_t size)
{
    Export("get channel line axis name", [&](const CCall& call) {
        call.CopyText(call.Channel(handle, group, channel)->GetAxis(dataset::lineAxis).name, buffer, size);
    });
}

void SetChannelData_LineAxisUnit(uint64_t handle, uint64_t group, uint64_t channel, const char* unit)
{
    Export("set channel line axis unit", [&](const CCall& call) {
        call.Channel(handle, group, channel)->SetAxisUnit(dataset::lineAxis, call.Text(unit));
    });
}

void GetChannelData_LineAxisUnit(uint64_t handle, uint64_t group, uint64_t channel, char* buffer, uint64_t size)
{
    Export("get channel line axis unit", [&](const CCall& call) {
        call.CopyText(call.Channel(handle, group, channel)->GetAxis(dataset::lineAxis).unit, buffer, size);
    });
}

void SetChannelData_LineAxisMin(uint64_t handle, uint64_t group, uint64_t channel, double min)
{
    Export("set channel line axis min",
           [&](const CCall& call) { call.Channel(handle, group, channel)->SetAxisMin(dataset::lineAxis, min); });
}

double GetChannelData_LineAxisMin(uint64_t handle, uint64_t group, uint64_t channel)
{
    return Export("get channel line axis min", [&](const CCall& call) {
        return call.Channel(handle, group, channel)->GetAxis(dataset::lineAxis).min;
    });
}

void SetChannelData_LineAxisRange(uint64_t handle, uint64_t group, uint64_t channel, double range)
{
    Export("set channel line axis range",
           [&](const CCall& call) { call.Channel(handle, group, channel)->SetAxisRange(dataset::lineAxis, range); });
}

double GetChannelData_LineAxisRange(uint64_t handle, uint64_t group, uint64_t channel)
{
    return Export("get channel line axis range", [&](const CCall& call) {
        return call.Channel(handle, group, channel)->GetAxis(dataset::lineAxis).range;
    });
}

// For a missing channel the action has a letter less: callers know the text.
void SetChannelData_SignalAxisName(uint64_t handle, uint64_t group, uint64_t channel, const char* name)
{
    Export("set channel signal axis name", [&](const CCall& call) {
        call.Group(handle, group);
        const CCall misspelt("set channel sigal axis name", call.Where());
        misspelt.Channel(handle, group, channel)->SetAxisName(dataset::signalAxis, call.Text(name));
    });
}

void GetChannelData_SignalAxisName(uint64_t handle, uint64_t group, uint64_t channel, char* buffer, uint64_t size)
{
    Export("get channel signal axis name", [&](const CCall& call) {
        call.CopyText(call.Channel(handle, group, channel)->GetAxis(dataset::signalAxis).name, buffer, size);
    });
}

void SetChannelData_SignalAxisUnit(uint64_t handle, uint64_t group, uint64_t channel, const char* unit)
{
    Export("set channel signal axis unit", [&](const CCall& call) {
        call.Channel(handle, group, channel)->SetAxisUnit(dataset::signalAxis, call.Text(unit));
    });
}

void GetChannelData_SignalAxisUnit(uint64_t handle, uint64_t group, uint64_t channel, char* buffer, uint64_t size)
{
    Export("get channel signal axis unit", [&](const CCall& call) {
        call.CopyText(call.Channel(handle, group, channel)->GetAxis(dataset::signalAxis).unit, buffer, size);
    });
}

void SetChannelData_SignalAxisMin(uint64_t handle, uint64_t group, uint64_t channel, double min)
{
    Export("set channel signal axis min",
           [&](const CCall& call) { call.Channel(handle, group, channel)->SetAxisMin(dataset::signalAxis, min); });
}

double GetChannelData_SignalAxisMin(uint64_t handle, uint64_t group, uint64_t channel)
{
    return Export("get channel signal axis min", [&](const CCall& call) {
        return call.Channel(handle, group, channel)->GetAxis(dataset::signalAxis).min;
    });
}

void SetChannelData_SignalAxisRange(uint64_t handle, uint64_t group, uint64_t channel, double range)
{
    Export("set channel signal axis range",
           [&](const CCall& call) { call.Channel(handle, group, channel)->SetAxisRange(dataset::signalAxis, range); });
}

double GetChannelData_SignalAxisRange(uint64_t handle, uint64_t group, uint64_t channel)
{
    return Export("get channel signal axis range", [&](const CCall& call) {
        return call.Channel(handle, group, channel)->GetAxis(dataset::signalAxis).range;
    });
}

void SetChannelData_LineRaw(uint64_t handle, uint64_t group, uint64_t channel, uint64_t line, const int32_t* values)
{
    Export("set channel line", [&](const CCall& call) {
        const auto buffer = call.Channel(handle, group, channel);
        call.Done(buffer->SetLineRaw(line, LineToStore(call, *buffer, line, values)));
    });
}

void SetChannelData_LineReal(uint64_t handle, uint64_t group, uint64_t channel, uint64_t line, const double* values)
{
    Export("set channel line", [&](const CCall& call) {
        const auto buffer = call.Channel(handle, group, channel);
        call.Done(buffer->SetLineReal(line, LineToStore(call, *buffer, line, values), RealToRawMode::SignalAxis));
    });
}

void GetChannelData_LineRaw(uint64_t handle, uint64_t group, uint64_t channel, uint64_t line, int32_t lineOp,
                            int32_t* values)
{
    Export("get channel line", [&](const CCall& call) {
        const auto corrected = CorrectedLine(call, *call.Channel(handle, group, channel), line, lineOp);
        call.NotNull(values);
        std::ranges::copy(corrected, values);
    });
}

void GetChannelData_LineReal(uint64_t handle, uint64_t group, uint64_t channel, uint64_t line, int32_t lineOp,
                             double* values)
{
    Export("get channel line", [&](const CCall& call) {
        const auto buffer = call.Channel(handle, group, channel);
        const auto corrected = CorrectedLine(call, *buffer, line, lineOp);
        call.NotNull(values);
        const auto scale = buffer->GetSignalScale();
        std::ranges::transform(corrected, values, [&](std::int32_t raw) { return scale.ToReal(raw); });
    });
}

void SetChannelData_PixelRaw(uint64_t handle, uint64_t group, uint64_t channel, uint64_t point, uint64_t line,
                             int32_t value)
{
    Export("set channel pixel", [&](const CCall& call) {
        call.Done(call.Channel(handle, group, channel)->SetPixelRaw(point, line, value));
    });
}

void SetChannelData_PixelReal(uint64_t handle, uint64_t group, uint64_t channel, uint64_t point, uint64_t line,
                              double value)
{
    Export("set channel pixel", [&](const CCall& call) {
        call.Done(call.Channel(handle, group, channel)->SetPixelReal(point, line, value, RealToRawMode::SignalAxis));
    });
}

int32_t GetChannelData_PixelRaw(uint64_t handle, uint64_t group, uint64_t channel, uint64_t point, uint64_t line,
                                int32_t lineOp)
{
    return Export("get channel pixel", [&](const CCall& call) {
        return CorrectedPixel(call, *call.Channel(handle, group, channel), point, line, lineOp);
    });
}

double GetChannelData_PixelReal(uint64_t handle, uint64_t group, uint64_t channel, uint64_t point, uint64_t line,
                                int32_t lineOp)
{
    return Export("get channel pixel", [&](const CCall& call) {
        const auto buffer = call.Channel(handle, group, channel);
        return buffer->GetSignalScale().ToReal(CorrectedPixel(call, *buffer, point, line, lineOp));
    });
}
