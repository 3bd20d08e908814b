#include "support/Edits.h"

#include "support/Axes.h"

#include <VELOxdDll.h>

#include <array>
#include <string>

namespace {

constexpr std::uint64_t root = 1;
constexpr std::array<std::int32_t, 5> raw{-536'870'912, -1, 0, 1, 536'870'911};
constexpr std::array<double, 5> real{-1e-7, 0, 2.5e-8, 1e-7, 5};

constexpr std::size_t longest = 65536; // points of a line that is written

// The values over and over.
template <class Value, std::size_t size>
std::vector<Value> Repeated(const std::array<Value, size>& values)
{
    std::vector<Value> line(longest);
    for (std::size_t i = 0; i < line.size(); ++i)
        line[i] = values[i % size];
    return line;
}

// Made ahead: no memory may be had while edits are made. Only the first few values are used, unless a file is another
// than usual.
const std::vector<std::int32_t> rawLine = Repeated(raw);
const std::vector<double> realLine = Repeated(real);

bool CanWriteLine(std::uint64_t h)
{
    return GetChannelData_Points(h, 0, 0) <= longest;
}

// The first node of the tree and its first child; 0, which is no node, if there is none.
std::uint64_t Top(std::uint64_t h)
{
    return SelectFirstChildMetaInfoItem(h, root);
}

std::uint64_t Child(std::uint64_t h)
{
    return SelectFirstChildMetaInfoItem(h, Top(h));
}

constexpr std::size_t many = 40; // enough items for a group to index them

std::string NameOfMany(std::uint64_t number)
{
    return "one of many, " + std::to_string(number);
}

void CreateOneOfMany(std::uint64_t h)
{
    CreateInfoItem(h, 0, NameOfMany(GetInfoItemCount(h, 0)).c_str(), "-");
}

void DeleteOneOfMany(std::uint64_t h)
{
    const auto item = GetInfoItemIndex(h, 0, NameOfMany(GetInfoItemCount(h, 0) - 1).c_str());
    if (!VELHasLastError())
        DeleteInfoItem(h, 0, item);
}

} // namespace

const std::vector<Edit>& Edits()
{
    static const std::vector<Edit> edits = [] {
        std::vector<Edit> all{
            [](auto h) { CreateGroup(h, 16); },
            [](auto h) { CreateGroup(h, 32); },
            [](auto h) { CreateGroup(h, 8); },
            [](auto h) { DeleteGroup(h, 2); },
            [](auto h) { SetLogicalGroupId(h, 1, 77); },
            [](auto h) { SetChannelCount(h, 0, 3); },
            [](auto h) { SetChannelCount(h, 1, 1); },
            [](auto h) { SetChannelXYDimension(h, 0, 0, 5, 4); },
            [](auto h) { SetChannelXYDimension(h, 0, 1, 9, 9); },
            [](auto h) { SetChannelXYDimension(h, 1, 0, 1000, 10); },
            [](auto h) { SetGroupName(h, 0, "a name too long to be kept inside a string object"); },
            [](auto h) { DeleteChannelBuffer(h, 0, 1); },
            [](auto h) { SetChannelData_Points(h, 1, 0, 4000); },
            [](auto h) { SetChannelData_Lines(h, 1, 0, 3); },
            [](auto h) {
                for (const AxisProperty& p : axisProperties) {
                    p.setText(h, 0, 0, p.text);
                    p.setNumber(h, 0, 0, 2e-7);
                }
            },
            [](auto h) { SetChannelData_LineAxisName(h, 0, 0, "Y #! \xB5"); },
            [](auto h) { SetChannelData_SignalAxisUnit(h, 0, 0, "\xC2\xB5m, a unit of many letters"); },
            [](auto h) { SetChannelData_SignalAxisMin(h, 0, 0, -1e-7); },
            [](auto h) {
                if (CanWriteLine(h))
                    SetChannelData_LineRaw(h, 0, 0, 0, rawLine.data());
            },
            [](auto h) {
                if (CanWriteLine(h))
                    SetChannelData_LineReal(h, 0, 0, 1, realLine.data());
            },
            [](auto h) { SetChannelData_PixelRaw(h, 1, 0, 3999, 2, 123'456'789); },
            [](auto h) { SetChannelData_PixelReal(h, 0, 0, 4, 3, 5e-8); },
            [](auto h) { CreateInfoGroup(h); },
            [](auto h) { CreateInfoGroupWithName(h, "Scan"); },
            [](auto h) { CreateInfoGroupWithName(h, "unwanted"); },
            [](auto h) { DeleteInfoGroup(h, 2); },
            [](auto h) { SetInfoGroupName(h, 0, "a group of settings with a long name"); },
            [](auto h) { SetInfoGroupNewIndex(h, 0, 1); },
            [](auto h) { CreateInfoItem(h, 0, "Time per line of the scan", "1 second, more or less"); },
            [](auto h) { CreateInfoItem(h, 0, "unwanted", "-"); },
            [](auto h) { CreateInfoItem(h, 1, "alone", "-"); },
            [](auto h) { SetInfoItemValue(h, 0, 0, "2 seconds, measured with a watch"); },
            [](auto h) { SetInfoItemName(h, 0, 0, "Time for each line of the scan"); },
            [](auto h) { DeleteInfoItem(h, 0, 1); },
            [](auto h) { DeleteAllInfoItems(h, 1); },
            [](auto h) { AddMetaInfoItemGroup(h, root, "Instrument"); },
            [](auto h) { SetInfoGroupNewIndex(h, 2, 0); },
            [](auto h) { AddMetaInfoItemGroup(h, Top(h), "Scanner"); },
            [](auto h) { AddMetaInfoItem(h, Top(h), "Serial number of the instrument", "4711"); },
            [](auto h) { AddMetaInfoItem(h, Child(h), "Range", "90 \xC2\xB5m"); },
            [](auto h) { AddMetaInfoItem(h, Top(h), "unwanted", "-"); },
            [](auto h) { SetMetaInfoItemName(h, Top(h), "Instrument and all that belongs to it"); },
            [](auto h) { SetMetaInfoItemValue(h, SelectNextMetaInfoItem(h, Child(h)), "4712, as the label has it"); },
            [](auto h) { DeleteMetaInfoItem(h, SelectNextMetaInfoItem(h, SelectNextMetaInfoItem(h, Child(h)))); },
            [](auto h) { SetInfoItemValue(h, 0, 0, "4713"); },
        };
        all.insert(all.end(), many, CreateOneOfMany);
        all.insert(all.end(), many, DeleteOneOfMany);
        return all;
    }();
    return edits;
}

void ApplyEdits(std::uint64_t handle)
{
    for (const Edit edit : Edits())
        edit(handle);
}
