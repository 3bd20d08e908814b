#include "oxd/example/SampleInfo.h"

#include "oxd/library/MetaNode.h"

#include <vector>

namespace oxd {

namespace {

struct Item
{
    const char* name;
    const char* value;
};

struct Settings
{
    const char* name;
    std::vector<Item> items;
};

// A list of groups. It stays one in the file as long as no two items have the same name.
std::vector<Settings> ScanSettings()
{
    return {
        {"Scan",
         {{"Image size", "5 µm"},
          {"Scan mode", "Forward and backward"},
          {"Points", "256"},
          {"Lines", "256"},
          {"Time/Line", "0.5 s"},
          {"Rotation", "0 °"},
          {"X-Pos", "12.4 µm"},
          {"Y-Pos", "-3.7 µm"},
          {"Z-Plane", "0 m"}}},
        {"Approach",
         {{"Operating mode", "Force modulation"},
          {"Tip voltage", "0 V"},
          {"Setpoint", "20 nN"},
          {"P-Gain", "2400"},
          {"I-Gain", "850"},
          {"Approach speed", "15 µm/s"}}},
        {"Tool",
         {{"Cantilever", "Contact, silicon"},
          {"Spring constant", "0.2 N/m"},
          {"Deflection sensitivity", "50 nm/V"},
          {"Tip radius", "7 nm"}}},
        {"Spec",
         {{"Modulated output", "Z"},
          {"Modulation range", "400 nm"},
          {"Modulation time", "0.5 s"},
          {"Points per curve", "512"},
          {"Curves", "16"}}},
    };
}

struct Device
{
    std::vector<const char*> path;
    std::vector<Item> items;
};

std::vector<Device> Devices()
{
    return {
        {{"Instrument"}, {{"Serial number", "0042"}}},
        {{"Instrument", "Scanner"}, {{"Type", "Tube"}, {"XY range", "50 µm"}, {"Z range", "6 µm"}}},
        {{"Instrument", "Scanner", "Calibration"},
         {{"X sensitivity", "152.6 nm/V"},
          {"Y sensitivity", "149.8 nm/V"},
          {"Z sensitivity", "18.31 nm/V"},
          {"XY angle", "90.2 °"}}},
        {{"Instrument", "Controller"}, {{"Input resolution", "24 bit"}, {"Sampling rate", "96 kHz"}}},
    };
}

void AddSettings(const DataSet& dataSet, const Settings& settings)
{
    const std::uint64_t group = dataSet.Call(CreateInfoGroupWithName, settings.name);
    for (const Item& item : settings.items) {
        dataSet.Call(CreateInfoItem, group, item.name, item.value);
    }
}

void AddDevice(const DataSet& dataSet, const Device& device)
{
    MetaNode group = MetaNode::Root(dataSet);
    for (const char* const name : device.path) {
        const auto known = group.FindGroup(name);
        group = known ? *known : group.AddGroup(name);
    }
    for (const Item& item : device.items) {
        group.AddItem(item.name, item.value);
    }
}

} // namespace

void AddSampleInfo(const DataSet& dataSet)
{
    for (const Settings& settings : ScanSettings()) {
        AddSettings(dataSet, settings);
    }
    for (const Device& device : Devices()) {
        AddDevice(dataSet, device);
    }
}

} // namespace oxd
