#include "support/Edits.h"

#include <VELOxdDll.h>

#include <array>

namespace {

constexpr std::uint64_t root = 1;
constexpr std::array<std::int32_t, 5> raw{-536'870'912, -1, 0, 1, 536'870'911};
constexpr std::array<double, 5> real{-1e-7, 0, 2.5e-8, 1e-7, 5};

// The first node of the tree, and the first one in that; 0, which is no node, when there is none.
std::uint64_t Top(std::uint64_t h)
{
    return SelectFirstChildMetaInfoItem(h, root);
}

std::uint64_t Child(std::uint64_t h)
{
    return SelectFirstChildMetaInfoItem(h, Top(h));
}

} // namespace

const std::vector<Edit>& Edits()
{
    static const std::vector<Edit> edits{
        {"create group", [](auto h) { CreateGroup(h, 16); }},
        {"create a second group", [](auto h) { CreateGroup(h, 32); }},
        {"create a third group", [](auto h) { CreateGroup(h, 8); }},
        {"delete group", [](auto h) { DeleteGroup(h, 2); }},
        {"set logical group id", [](auto h) { SetLogicalGroupId(h, 1, 77); }},
        {"set channel count", [](auto h) { SetChannelCount(h, 0, 3); }},
        {"set another channel count", [](auto h) { SetChannelCount(h, 1, 1); }},
        {"set dimension", [](auto h) { SetChannelXYDimension(h, 0, 0, 5, 4); }},
        {"set another dimension", [](auto h) { SetChannelXYDimension(h, 0, 1, 9, 9); }},
        {"set a large dimension", [](auto h) { SetChannelXYDimension(h, 1, 0, 1000, 10); }},
        {"set group name", [](auto h) { SetGroupName(h, 0, "a name too long to be kept inside a string object"); }},
        {"delete channel", [](auto h) { DeleteChannelBuffer(h, 0, 1); }},
        {"set points", [](auto h) { SetChannelData_Points(h, 1, 0, 4000); }},
        {"set lines", [](auto h) { SetChannelData_Lines(h, 1, 0, 3); }},
        {"set point axis name", [](auto h) { SetChannelData_PointAxisName(h, 0, 0, "X"); }},
        {"set point axis unit", [](auto h) { SetChannelData_PointAxisUnit(h, 0, 0, "m"); }},
        {"set point axis min", [](auto h) { SetChannelData_PointAxisMin(h, 0, 0, -1e-6); }},
        {"set point axis range", [](auto h) { SetChannelData_PointAxisRange(h, 0, 0, 2e-6); }},
        {"set line axis name", [](auto h) { SetChannelData_LineAxisName(h, 0, 0, "Y #! \xB5"); }},
        {"set line axis unit", [](auto h) { SetChannelData_LineAxisUnit(h, 0, 0, "m"); }},
        {"set line axis min", [](auto h) { SetChannelData_LineAxisMin(h, 0, 0, 0.5); }},
        {"set line axis range", [](auto h) { SetChannelData_LineAxisRange(h, 0, 0, 1e-6); }},
        {"set signal axis name", [](auto h) { SetChannelData_SignalAxisName(h, 0, 0, "Topography"); }},
        {"set signal axis unit",
         [](auto h) { SetChannelData_SignalAxisUnit(h, 0, 0, "\xC2\xB5m, a unit of many letters"); }},
        {"set signal axis min", [](auto h) { SetChannelData_SignalAxisMin(h, 0, 0, -1e-7); }},
        {"set signal axis range", [](auto h) { SetChannelData_SignalAxisRange(h, 0, 0, 2e-7); }},
        {"set raw line", [](auto h) { SetChannelData_LineRaw(h, 0, 0, 0, raw.data()); }},
        {"set real line", [](auto h) { SetChannelData_LineReal(h, 0, 0, 1, real.data()); }},
        {"set raw pixel", [](auto h) { SetChannelData_PixelRaw(h, 1, 0, 3999, 2, 123'456'789); }},
        {"set real pixel", [](auto h) { SetChannelData_PixelReal(h, 0, 0, 4, 3, 5e-8); }},
        {"create info group", [](auto h) { CreateInfoGroup(h); }},
        {"create named info group", [](auto h) { CreateInfoGroupWithName(h, "Scan"); }},
        {"create a third info group", [](auto h) { CreateInfoGroupWithName(h, "unwanted"); }},
        {"delete info group", [](auto h) { DeleteInfoGroup(h, 2); }},
        {"set info group name", [](auto h) { SetInfoGroupName(h, 0, "a group of settings with a long name"); }},
        {"move info group", [](auto h) { SetInfoGroupNewIndex(h, 0, 1); }},
        {"create info item",
         [](auto h) { CreateInfoItem(h, 0, "Time per line of the scan", "1 second, more or less"); }},
        {"create a second info item", [](auto h) { CreateInfoItem(h, 0, "unwanted", "-"); }},
        {"create a third info item", [](auto h) { CreateInfoItem(h, 1, "alone", "-"); }},
        {"set info item value", [](auto h) { SetInfoItemValue(h, 0, 0, "2 seconds, measured with a watch"); }},
        {"set info item name", [](auto h) { SetInfoItemName(h, 0, 0, "Time for each line of the scan"); }},
        {"delete info item", [](auto h) { DeleteInfoItem(h, 0, 1); }},
        {"delete all info items", [](auto h) { DeleteAllInfoItems(h, 1); }},
        {"add top-level node", [](auto h) { AddMetaInfoItemGroup(h, root, "Instrument"); }},
        {"move it to the front", [](auto h) { SetInfoGroupNewIndex(h, 2, 0); }},
        {"add group", [](auto h) { AddMetaInfoItemGroup(h, Top(h), "Scanner"); }},
        {"add leaf", [](auto h) { AddMetaInfoItem(h, Top(h), "Serial number of the instrument", "4711"); }},
        {"add leaf below", [](auto h) { AddMetaInfoItem(h, Child(h), "Range", "90 \xC2\xB5m"); }},
        {"add a second leaf", [](auto h) { AddMetaInfoItem(h, Top(h), "unwanted", "-"); }},
        {"set node name", [](auto h) { SetMetaInfoItemName(h, Top(h), "Instrument and all that belongs to it"); }},
        {"set node value",
         [](auto h) { SetMetaInfoItemValue(h, SelectNextMetaInfoItem(h, Child(h)), "4712, as the label has it"); }},
        {"delete node",
         [](auto h) { DeleteMetaInfoItem(h, SelectNextMetaInfoItem(h, SelectNextMetaInfoItem(h, Child(h)))); }},
    };
    return edits;
}
