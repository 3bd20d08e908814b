// The exported functions that work on an open file. Each checks its arguments in the order that the public header
// gives, calls one operation of the data set and copies the result out. They share one file because callers know its
// name: it is in the texts of their failures.
#include "VELOxdDll.h"

#include "api/Boundary.h"
#include "api/ExpectedFailure.h"
#include "api/FileManager.h"
#include "api/Lookup.h"
#include "velflexlib/dataset/operators/LineOperatorTable.h"
#include "velstdlib/machine/StackGuard.h"
#include "velstdlib/util/Limits.h"

#include <algorithm>
#include <memory>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace dataset = veltaris::velflexlib::dataset;
namespace limits = veltaris::velstdlib::util::limits;
using dataset::CLineOperator;
using dataset::RealToRawMode;

namespace {

constexpr std::uint64_t rootItem = 1; // stands for the list of top-level groups, which has no node of its own

// The whole line in the caller's memory. Fails when the channel has no such line.
template <class Value>
std::span<const Value> LineToStore(const CCall& call, const CDataBuffer& buffer, std::uint64_t line,
                                   const Value* values)
{
    call.Done(line < buffer.GetLines());
    call.NotNull(values);
    return {values, buffer.GetPoints()};
}

// Fails for a null pointer, after the failures that reading the line would have. With memory to write to, reading
// itself checks the line.
void CheckLineRead(const CCall& call, const CDataBuffer& buffer, std::uint64_t line, const void* values)
{
    if (!values) {
        call.Done(buffer.CanReadLine(line));
        call.NotNull(values);
    }
}

std::uint64_t CreateInfo(std::uint64_t handle, const std::string& name)
{
    CInfoSet& infoSet = InfoSetOf(handle);
    auto group = std::make_unique<CInfoSetItem>(name);
    group->SetStoredFlat(true);
    infoSet.AddGroup(std::move(group));
    return infoSet.GetGroups().size() - 1;
}

// Adds the node to the parent's sub-items. The result is the handle of the node.
std::uint64_t AddNode(CInfoSet& infoSet, CInfoSetItem& parent, std::unique_ptr<CInfoSetItem> node)
{
    node->SetOwner(&infoSet);
    const std::uint64_t handle = infoSet.GetHandle(*node); // taken first, so that a failure leaves no node behind
    parent.AddSubItem(std::move(node));
    return handle;
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
        GroupOf(call, handle, group);
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
                  [&](const CCall& call) -> uint64_t { return GroupOf(call, handle, group).GetLogicalGroupId(); });
}

void SetLogicalGroupId(uint64_t handle, uint64_t group, uint64_t id)
{
    Export("set logical group id",
           [&](const CCall& call) { GroupOf(call, handle, group).SetLogicalGroupId(static_cast<std::uint32_t>(id)); });
}

void GetGroupName(uint64_t handle, uint64_t group, char* buffer, uint64_t size)
{
    Export("get group name",
           [&](const CCall& call) { call.CopyText(GroupOf(call, handle, group).GetName(), buffer, size); });
}

void SetGroupName(uint64_t handle, uint64_t group, const char* name)
{
    Export("set group name", [&](const CCall& call) { GroupOf(call, handle, group).SetName(call.Text(name)); });
}

// The failures name the action of the getter. Callers may depend on that text, so it stays.
void SetChannelCount(uint64_t handle, uint64_t group, uint64_t count)
{
    Export("get channel count", [&](const CCall& call) { GroupOf(call, handle, group).SetChannelCount(count); });
}

uint64_t GetChannelCount(uint64_t handle, uint64_t group)
{
    return Export("get channel count",
                  [&](const CCall& call) -> uint64_t { return GroupOf(call, handle, group).GetChannelCount(); });
}

bool HasChannelBuffer(uint64_t handle, uint64_t group, uint64_t channel)
{
    return Export("evaluate channel", [&](const CCall& call) {
        return GroupWithSlot(call, handle, group, channel).FindChannelBuffer(channel) != nullptr;
    });
}

void DeleteChannelBuffer(uint64_t handle, uint64_t group, uint64_t channel)
{
    Export("delete channel", [&](const CCall& call) {
        ChannelOf(call, handle, group, channel);
        GroupOf(call, handle, group).DeleteChannelBuffer(channel);
    });
}

void SetChannelXYDimension(uint64_t handle, uint64_t group, uint64_t channel, uint64_t points, uint64_t lines)
{
    Export("set channel xy dimension", [&](const CCall& call) {
        GroupWithSlot(call, handle, group, channel).GetOrCreateChannelBuffer(channel, points, lines);
    });
}

void SetChannelData_Points(uint64_t handle, uint64_t group, uint64_t channel, uint64_t points)
{
    Export("set channel points", [&](const CCall& call) {
        call.AtMost(limits::singleDimension, points);
        CDataBuffer& buffer = ChannelOf(call, handle, group, channel);
        buffer.SetXYDimension(points, buffer.GetLines());
    });
}

uint64_t GetChannelData_Points(uint64_t handle, uint64_t group, uint64_t channel)
{
    return Export("get channel points",
                  [&](const CCall& call) { return ChannelOf(call, handle, group, channel).GetPoints(); });
}

uint64_t GetChannelData_PointsPerLine(uint64_t handle, uint64_t group, uint64_t channel, uint64_t line)
{
    return Export("get channel points",
                  [&](const CCall& call) { return ChannelOf(call, handle, group, channel).GetLineAxis(line).count; });
}

void SetChannelData_Lines(uint64_t handle, uint64_t group, uint64_t channel, uint64_t lines)
{
    Export("set channel lines", [&](const CCall& call) {
        call.AtMost(limits::singleDimension, lines);
        CDataBuffer& buffer = ChannelOf(call, handle, group, channel);
        buffer.SetXYDimension(buffer.GetPoints(), lines);
    });
}

uint64_t GetChannelData_Lines(uint64_t handle, uint64_t group, uint64_t channel)
{
    return Export("get channel lines",
                  [&](const CCall& call) { return ChannelOf(call, handle, group, channel).GetLines(); });
}

void SetChannelData_PointAxisName(uint64_t handle, uint64_t group, uint64_t channel, const char* name)
{
    Export("set channel point axis name", [&](const CCall& call) {
        ChannelOf(call, handle, group, channel).SetAxisName(dataset::pointAxis, call.Text(name));
    });
}

void GetChannelData_PointAxisName(uint64_t handle, uint64_t group, uint64_t channel, char* buffer, uint64_t size)
{
    Export("get channel point axis name", [&](const CCall& call) {
        call.CopyText(ChannelOf(call, handle, group, channel).GetAxisName(dataset::pointAxis), buffer, size);
    });
}

void SetChannelData_PointAxisUnit(uint64_t handle, uint64_t group, uint64_t channel, const char* unit)
{
    Export("set channel point axis unit", [&](const CCall& call) {
        ChannelOf(call, handle, group, channel).SetAxisUnit(dataset::pointAxis, call.Text(unit));
    });
}

void GetChannelData_PointAxisUnit(uint64_t handle, uint64_t group, uint64_t channel, char* buffer, uint64_t size)
{
    Export("get channel point axis unit", [&](const CCall& call) {
        call.CopyText(ChannelOf(call, handle, group, channel).GetAxisUnit(dataset::pointAxis), buffer, size);
    });
}

void SetChannelData_PointAxisMin(uint64_t handle, uint64_t group, uint64_t channel, double min)
{
    Export("set channel point axis min",
           [&](const CCall& call) { ChannelOf(call, handle, group, channel).SetAxisMin(dataset::pointAxis, min); });
}

double GetChannelData_PointAxisMin(uint64_t handle, uint64_t group, uint64_t channel)
{
    return Export("get channel point axis min", [&](const CCall& call) {
        return ChannelOf(call, handle, group, channel).GetAxisMin(dataset::pointAxis);
    });
}

double GetChannelData_PointAxisMinPerLine(uint64_t handle, uint64_t group, uint64_t channel, uint64_t line)
{
    return Export("get channel point axis min",
                  [&](const CCall& call) { return ChannelOf(call, handle, group, channel).GetLineAxis(line).min; });
}

void SetChannelData_PointAxisRange(uint64_t handle, uint64_t group, uint64_t channel, double range)
{
    Export("set channel point axis range",
           [&](const CCall& call) { ChannelOf(call, handle, group, channel).SetAxisRange(dataset::pointAxis, range); });
}

double GetChannelData_PointAxisRange(uint64_t handle, uint64_t group, uint64_t channel)
{
    return Export("get channel point axis range", [&](const CCall& call) {
        return ChannelOf(call, handle, group, channel).GetAxisRange(dataset::pointAxis);
    });
}

double GetChannelData_PointAxisRangePerLine(uint64_t handle, uint64_t group, uint64_t channel, uint64_t line)
{
    return Export("get channel point axis range",
                  [&](const CCall& call) { return ChannelOf(call, handle, group, channel).GetLineAxis(line).range; });
}

void SetChannelData_LineAxisName(uint64_t handle, uint64_t group, uint64_t channel, const char* name)
{
    Export("set channel line axis name", [&](const CCall& call) {
        ChannelOf(call, handle, group, channel).SetAxisName(dataset::lineAxis, call.Text(name));
    });
}

void GetChannelData_LineAxisName(uint64_t handle, uint64_t group, uint64_t channel, char* buffer, uint64_t size)
{
    Export("get channel line axis name", [&](const CCall& call) {
        call.CopyText(ChannelOf(call, handle, group, channel).GetAxisName(dataset::lineAxis), buffer, size);
    });
}

void SetChannelData_LineAxisUnit(uint64_t handle, uint64_t group, uint64_t channel, const char* unit)
{
    Export("set channel line axis unit", [&](const CCall& call) {
        ChannelOf(call, handle, group, channel).SetAxisUnit(dataset::lineAxis, call.Text(unit));
    });
}

void GetChannelData_LineAxisUnit(uint64_t handle, uint64_t group, uint64_t channel, char* buffer, uint64_t size)
{
    Export("get channel line axis unit", [&](const CCall& call) {
        call.CopyText(ChannelOf(call, handle, group, channel).GetAxisUnit(dataset::lineAxis), buffer, size);
    });
}

void SetChannelData_LineAxisMin(uint64_t handle, uint64_t group, uint64_t channel, double min)
{
    Export("set channel line axis min",
           [&](const CCall& call) { ChannelOf(call, handle, group, channel).SetAxisMin(dataset::lineAxis, min); });
}

double GetChannelData_LineAxisMin(uint64_t handle, uint64_t group, uint64_t channel)
{
    return Export("get channel line axis min", [&](const CCall& call) {
        return ChannelOf(call, handle, group, channel).GetAxisMin(dataset::lineAxis);
    });
}

void SetChannelData_LineAxisRange(uint64_t handle, uint64_t group, uint64_t channel, double range)
{
    Export("set channel line axis range",
           [&](const CCall& call) { ChannelOf(call, handle, group, channel).SetAxisRange(dataset::lineAxis, range); });
}

double GetChannelData_LineAxisRange(uint64_t handle, uint64_t group, uint64_t channel)
{
    return Export("get channel line axis range", [&](const CCall& call) {
        return ChannelOf(call, handle, group, channel).GetAxisRange(dataset::lineAxis);
    });
}

// The failure for a missing channel misspells the action. Callers may depend on that text, so it stays.
void SetChannelData_SignalAxisName(uint64_t handle, uint64_t group, uint64_t channel, const char* name)
{
    Export("set channel signal axis name", [&](const CCall& call) {
        GroupOf(call, handle, group);
        const CCall misspelt("set channel sigal axis name", call.Where());
        ChannelOf(misspelt, handle, group, channel).SetAxisName(dataset::signalAxis, call.Text(name));
    });
}

void GetChannelData_SignalAxisName(uint64_t handle, uint64_t group, uint64_t channel, char* buffer, uint64_t size)
{
    Export("get channel signal axis name", [&](const CCall& call) {
        call.CopyText(ChannelOf(call, handle, group, channel).GetAxisName(dataset::signalAxis), buffer, size);
    });
}

void SetChannelData_SignalAxisUnit(uint64_t handle, uint64_t group, uint64_t channel, const char* unit)
{
    Export("set channel signal axis unit", [&](const CCall& call) {
        ChannelOf(call, handle, group, channel).SetAxisUnit(dataset::signalAxis, call.Text(unit));
    });
}

void GetChannelData_SignalAxisUnit(uint64_t handle, uint64_t group, uint64_t channel, char* buffer, uint64_t size)
{
    Export("get channel signal axis unit", [&](const CCall& call) {
        call.CopyText(ChannelOf(call, handle, group, channel).GetAxisUnit(dataset::signalAxis), buffer, size);
    });
}

void SetChannelData_SignalAxisMin(uint64_t handle, uint64_t group, uint64_t channel, double min)
{
    Export("set channel signal axis min",
           [&](const CCall& call) { ChannelOf(call, handle, group, channel).SetAxisMin(dataset::signalAxis, min); });
}

double GetChannelData_SignalAxisMin(uint64_t handle, uint64_t group, uint64_t channel)
{
    return Export("get channel signal axis min", [&](const CCall& call) {
        return ChannelOf(call, handle, group, channel).GetAxisMin(dataset::signalAxis);
    });
}

void SetChannelData_SignalAxisRange(uint64_t handle, uint64_t group, uint64_t channel, double range)
{
    Export("set channel signal axis range", [&](const CCall& call) {
        ChannelOf(call, handle, group, channel).SetAxisRange(dataset::signalAxis, range);
    });
}

double GetChannelData_SignalAxisRange(uint64_t handle, uint64_t group, uint64_t channel)
{
    return Export("get channel signal axis range", [&](const CCall& call) {
        return ChannelOf(call, handle, group, channel).GetAxisRange(dataset::signalAxis);
    });
}

void SetChannelData_LineRaw(uint64_t handle, uint64_t group, uint64_t channel, uint64_t line, const int32_t* values)
{
    Export("set channel line", [&](const CCall& call) {
        CDataBuffer& buffer = ChannelOf(call, handle, group, channel);
        call.Done(buffer.SetLineRaw(line, LineToStore(call, buffer, line, values)));
    });
}

void SetChannelData_LineReal(uint64_t handle, uint64_t group, uint64_t channel, uint64_t line, const double* values)
{
    Export("set channel line", [&](const CCall& call) {
        CDataBuffer& buffer = ChannelOf(call, handle, group, channel);
        call.Done(buffer.SetLineReal(line, LineToStore(call, buffer, line, values), RealToRawMode::SignalAxis));
    });
}

void GetChannelData_LineRaw(uint64_t handle, uint64_t group, uint64_t channel, uint64_t line, int32_t lineOp,
                            int32_t* values)
{
    Export("get channel line", [&](const CCall& call) {
        const CDataBuffer& buffer = ChannelOf(call, handle, group, channel);
        const CLineOperator& lineOperator = dataset::GetLineOperator(lineOp);
        CheckLineRead(call, buffer, line, values);
        call.Done(buffer.ReadLineRaw(line, lineOperator, values));
    });
}

void GetChannelData_LineReal(uint64_t handle, uint64_t group, uint64_t channel, uint64_t line, int32_t lineOp,
                             double* values)
{
    Export("get channel line", [&](const CCall& call) {
        const CDataBuffer& buffer = ChannelOf(call, handle, group, channel);
        const CLineOperator& lineOperator = dataset::GetLineOperator(lineOp);
        CheckLineRead(call, buffer, line, values);
        call.Done(buffer.ReadLineReal(line, lineOperator, values));
    });
}

VELOXD_NO_STACK_GUARD void SetChannelData_PixelRaw(uint64_t handle, uint64_t group, uint64_t channel, uint64_t point,
                                                   uint64_t line, int32_t value)
{
    Export("set channel pixel", [&](const CCall& call) {
        call.Done(ChannelOf(call, handle, group, channel).SetPixelRaw(point, line, value));
    });
}

VELOXD_NO_STACK_GUARD void SetChannelData_PixelReal(uint64_t handle, uint64_t group, uint64_t channel, uint64_t point,
                                                    uint64_t line, double value)
{
    Export("set channel pixel", [&](const CCall& call) {
        call.Done(ChannelOf(call, handle, group, channel).SetPixelReal(point, line, value, RealToRawMode::SignalAxis));
    });
}

VELOXD_NO_STACK_GUARD int32_t GetChannelData_PixelRaw(uint64_t handle, uint64_t group, uint64_t channel, uint64_t point,
                                                      uint64_t line, int32_t lineOp)
{
    return Export("get channel pixel", [&](const CCall& call) {
        const CDataBuffer& buffer = ChannelOf(call, handle, group, channel);
        int32_t value = 0;
        call.Done(buffer.ReadPixelRaw(point, line, dataset::GetLineOperator(lineOp), value));
        return value;
    });
}

VELOXD_NO_STACK_GUARD double GetChannelData_PixelReal(uint64_t handle, uint64_t group, uint64_t channel, uint64_t point,
                                                      uint64_t line, int32_t lineOp)
{
    return Export("get channel pixel", [&](const CCall& call) {
        const CDataBuffer& buffer = ChannelOf(call, handle, group, channel);
        double value = 0;
        call.Done(buffer.ReadPixelReal(point, line, dataset::GetLineOperator(lineOp), value));
        return value;
    });
}

uint64_t GetInfoGroupCount(uint64_t handle)
{
    return Export([&](const CCall&) -> uint64_t { return InfoSetOf(handle).GetGroups().size(); });
}

uint64_t CreateInfoGroup(uint64_t handle)
{
    return Export([&](const CCall&) { return CreateInfo(handle, {}); });
}

uint64_t CreateInfoGroupWithName(uint64_t handle, const char* name)
{
    return Export("create info", [&](const CCall& call) {
        InfoSetOf(handle);
        return CreateInfo(handle, call.Text(name));
    });
}

uint64_t GetInfoGroupIndex(uint64_t handle, const char* name)
{
    return Export("get info index", [&](const CCall& call) -> uint64_t {
        const CInfoSet& infoSet = InfoSetOf(handle);
        const auto index = infoSet.GetGroupIndex(call.Text(name));
        if (index == CInfoSet::noIndex)
            call.FailAlone("No info with given name found. Name: ", name);
        return index;
    });
}

void DeleteInfoGroup(uint64_t handle, uint64_t info)
{
    Export("delete info", [&](const CCall& call) {
        InfoOf(call, handle, info);
        InfoSetOf(handle).DeleteGroup(static_cast<std::uint32_t>(info));
    });
}

void DeleteAllInfoGroups(uint64_t handle)
{
    Export([&](const CCall&) { InfoSetOf(handle).DeleteAllGroups(); });
}

// The failure for a short buffer names the action of GetInfoItemValue. Callers may depend on that text, so it stays.
void GetInfoGroupName(uint64_t handle, uint64_t info, char* buffer, uint64_t size)
{
    Export("get info name", [&](const CCall& call) {
        const std::string& name = InfoOf(call, handle, info).GetName();
        CCall("get info item value", call.Where()).HasRoom(name, size);
        call.CopyText(name, buffer, size);
    });
}

void SetInfoGroupName(uint64_t handle, uint64_t info, const char* name)
{
    Export("set info name", [&](const CCall& call) { InfoOf(call, handle, info).SetName(call.Text(name)); });
}

void SetInfoGroupNewIndex(uint64_t handle, uint64_t info, uint64_t newIndex)
{
    Export("set new info index", [&](const CCall& call) {
        InfoOf(call, handle, info);
        if (!InfoSetOf(handle).MoveGroup(static_cast<std::int32_t>(info), static_cast<std::int32_t>(newIndex)))
            call.FailAlone("Error while moving info");
    });
}

uint64_t GetInfoItemCount(uint64_t handle, uint64_t info)
{
    return Export("get info item count",
                  [&](const CCall& call) -> uint64_t { return InfoOf(call, handle, info).GetLeafCount(); });
}

uint64_t CreateInfoItem(uint64_t handle, uint64_t info, const char* name, const char* value)
{
    return Export("create info item", [&](const CCall& call) -> uint64_t {
        CInfoSetItem& group = InfoOf(call, handle, info);
        if (group.FindLeaf(call.Text(name)))
            call.Fail("Info item with given name already exists. Name: ", name);
        auto item = std::make_unique<CInfoSetItem>(name, call.Text(value));
        item->SetOwner(&InfoSetOf(handle));
        call.Done(group.AddSubItem(std::move(item)));
        return group.GetLeafCount() - 1;
    });
}

void SetInfoItemValue(uint64_t handle, uint64_t info, uint64_t item, const char* value)
{
    Export("set info item value",
           [&](const CCall& call) { InfoItemOf(call, handle, info, item).SetValue(call.Text(value)); });
}

void GetInfoItemValue(uint64_t handle, uint64_t info, uint64_t item, char* buffer, uint64_t size)
{
    Export("get info item value",
           [&](const CCall& call) { call.CopyText(InfoItemOf(call, handle, info, item).GetValue(), buffer, size); });
}

void SetInfoItemName(uint64_t handle, uint64_t info, uint64_t item, const char* name)
{
    Export("set info item name",
           [&](const CCall& call) { InfoItemOf(call, handle, info, item).SetName(call.Text(name)); });
}

void GetInfoItemName(uint64_t handle, uint64_t info, uint64_t item, char* buffer, uint64_t size)
{
    Export("get info item name",
           [&](const CCall& call) { call.CopyText(InfoItemOf(call, handle, info, item).GetName(), buffer, size); });
}

uint64_t GetInfoItemIndex(uint64_t handle, uint64_t info, const char* name)
{
    return Export("get info item index", [&](const CCall& call) -> uint64_t {
        const CInfoSetItem& group = InfoOf(call, handle, info);
        const CInfoSetItem* const item = group.FindLeaf(call.Text(name));
        if (!item)
            call.Fail("No info item with given name available. Name: ", name);
        return group.GetLeafIndex(*item);
    });
}

void DeleteInfoItem(uint64_t handle, uint64_t info, uint64_t item)
{
    Export("delete info item", [&](const CCall& call) {
        const CInfoSetItem& leaf = InfoItemOf(call, handle, info, item);
        call.Done(InfoOf(call, handle, info).DeleteSubItem(&leaf));
    });
}

void DeleteAllInfoItems(uint64_t handle, uint64_t info)
{
    Export("delete all info items", [&](const CCall& call) { InfoOf(call, handle, info).DeleteLeafItems(); });
}

uint64_t GetMetaInfoTreeRootHandle(uint64_t handle)
{
    return Export([&](const CCall&) {
        InfoSetOf(handle);
        return rootItem;
    });
}

bool IsMetaInfoItemAGroup(uint64_t, uint64_t item)
{
    return Export("evaluate info item", [&](const CCall& call) {
        if (item == rootItem)
            return true;
        const CInfoSetItem* const node = CInfoSet::FindItemOfAnySet(item);
        if (!node)
            call.FailUnknown();
        return node->IsGroup();
    });
}

uint64_t GetMetaInfoItemChildCount(uint64_t handle, uint64_t item)
{
    return Export("get info item child count", [&](const CCall& call) -> uint64_t {
        const CInfoSet& infoSet = InfoSetOf(handle);
        return item == rootItem ? infoSet.GetGroups().size() : MetaItemOf(call, infoSet, item).GetSubItems().size();
    });
}

void GetMetaInfoItemName(uint64_t handle, uint64_t item, char* buffer, uint64_t size)
{
    Export("get info item name", [&](const CCall& call) {
        const CInfoSet& infoSet = InfoSetOf(handle);
        call.CopyText(item == rootItem ? "Root" : MetaItemOf(call, infoSet, item).GetName(), buffer, size);
    });
}

void SetMetaInfoItemName(uint64_t handle, uint64_t item, const char* name)
{
    Export("set info item name", [&](const CCall& call) {
        const CInfoSet& infoSet = InfoSetOf(handle);
        if (item == rootItem)
            call.FailAlone("Unable to set info item name of ROOT item");
        MetaItemOf(call, infoSet, item).SetName(call.Text(name));
    });
}

void GetMetaInfoItemValue(uint64_t handle, uint64_t item, char* buffer, uint64_t size)
{
    Export("get info item value", [&](const CCall& call) {
        const CInfoSet& infoSet = InfoSetOf(handle);
        if (item == rootItem)
            call.FailAlone("Unable to get info item value from ROOT item");
        call.CopyText(MetaItemOf(call, infoSet, item).GetValue(), buffer, size);
    });
}

void SetMetaInfoItemValue(uint64_t handle, uint64_t item, const char* value)
{
    Export("set info item value", [&](const CCall& call) {
        const CInfoSet& infoSet = InfoSetOf(handle);
        if (item == rootItem)
            call.FailAlone("Unable to set info item value of ROOT item");
        CInfoSetItem& node = MetaItemOf(call, infoSet, item);
        if (node.IsGroup())
            call.FailAlone("Unable to set info item value of group item");
        node.SetValue(call.Text(value));
    });
}

uint64_t SelectFirstChildMetaInfoItem(uint64_t handle, uint64_t item)
{
    return Export("select first child of info item", [&](const CCall& call) -> uint64_t {
        CInfoSet& infoSet = InfoSetOf(handle);
        const auto& children = item == rootItem ? infoSet.GetGroups() : MetaItemOf(call, infoSet, item).GetSubItems();
        if (children.empty()) {
            static const CExpectedFailure none(call, "Item isn't a group or has no childs. Handle: ");
            none.Store(std::to_string(item));
            return 0;
        }
        return infoSet.GetHandle(*children.front());
    });
}

uint64_t SelectNextMetaInfoItem(uint64_t handle, uint64_t item)
{
    return Export("select next info item", [&](const CCall& call) -> uint64_t {
        CInfoSet& infoSet = InfoSetOf(handle);
        CInfoSetItem* const next = item == rootItem ? nullptr : MetaItemOf(call, infoSet, item).GetNext();
        if (!next) {
            static const CExpectedFailure end(call, "No further items in this node available!");
            end.Store();
            return 0;
        }
        return infoSet.GetHandle(*next);
    });
}

uint64_t SelectParentMetaInfoItem(uint64_t handle, uint64_t item)
{
    return Export("select parent of info item", [&](const CCall& call) {
        if (item == rootItem)
            call.FailAlone("Unable to get parent of ROOT item");
        CInfoSet& infoSet = InfoSetOf(handle);
        CInfoSetItem* const parent = MetaItemOf(call, infoSet, item).GetParent();
        return parent ? infoSet.GetHandle(*parent) : rootItem;
    });
}

uint64_t AddMetaInfoItem(uint64_t handle, uint64_t item, const char* name, const char* value)
{
    return Export("add info item", [&](const CCall& call) {
        if (item == rootItem)
            call.FailAlone("Unable to add non group info item to ROOT item. Only group items are allowed.");
        CInfoSet& infoSet = InfoSetOf(handle);
        CInfoSetItem& parent = MetaItemOf(call, infoSet, item);
        if (!parent.IsGroup())
            call.FailAlone("Unable to add info item to non group item.");
        return AddNode(infoSet, parent, std::make_unique<CInfoSetItem>(call.Text(name), call.Text(value)));
    });
}

uint64_t AddMetaInfoItemGroup(uint64_t handle, uint64_t item, const char* name)
{
    return Export("add info item", [&](const CCall& call) {
        CInfoSet& infoSet = InfoSetOf(handle);
        CInfoSetItem* const parent = item == rootItem ? nullptr : &MetaItemOf(call, infoSet, item);
        if (parent && !parent->IsGroup())
            call.FailAlone("Unable to add info item to non group item.");
        auto group = std::make_unique<CInfoSetItem>(call.Text(name));
        if (parent)
            return AddNode(infoSet, *parent, std::move(group));
        group->SetOwner(&infoSet);
        const std::uint64_t added = infoSet.GetHandle(*group);
        infoSet.AddGroup(std::move(group));
        return added;
    });
}

void DeleteMetaInfoItem(uint64_t handle, uint64_t item)
{
    Export("delete info item", [&](const CCall& call) {
        if (item == rootItem)
            call.FailAlone("Unable to delete ROOT item.");
        CInfoSet& infoSet = InfoSetOf(handle);
        CInfoSetItem& node = MetaItemOf(call, infoSet, item);
        if (CInfoSetItem* const parent = node.GetParent())
            call.Done(parent->DeleteSubItem(&node));
        else
            infoSet.DeleteGroup(node);
    });
}

void DeleteAllMetaInfoItems(uint64_t handle)
{
    Export([&](const CCall&) { InfoSetOf(handle).DeleteAllGroups(); });
}
