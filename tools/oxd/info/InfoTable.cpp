#include "oxd/info/FileInfo.h"

#include "oxd/info/TextTable.h"
#include "oxd/info/ViewTable.h"
#include "oxd/system/Text.h"
#include "oxd/system/Unit.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace oxd {

namespace {

constexpr const char* none = "-";
constexpr const char* uncertain = " (?)";

constexpr const char* bitsNote =
    "\nBits: the fewest of 8, 16 and 32 that hold every sample exactly, not those of its storage.\n";
constexpr const char* notReadNote = "\nBits and values: not read; --values reads them.\n";
constexpr const char* uncertainNote = "(?): the samples may not be those of this channel.\n";

bool HasUncertain(const GroupInfo& group)
{
    return std::any_of(group.channels.begin(), group.channels.end(),
                       [](const auto& channel) { return channel && !channel->isCertain; });
}

// Both ends in the same multiple of the unit, which suits the one farther from zero.
std::string RangeText(double min, double max, const std::string& unit)
{
    const double magnitude = std::max(std::fabs(min), std::fabs(max));
    const UnitMultiple multiple = TakesPrefix(unit) ? WithPrefix(unit, magnitude) : UnitMultiple{1, unit};
    return Printable(ToText(min * multiple.factor) + " .. " + ToText(max * multiple.factor) +
                     (unit.empty() ? "" : " " + multiple.text));
}

std::string AxisText(const Axis& axis)
{
    return RangeText(axis.min, axis.min + axis.range, axis.unit);
}

std::string SizeText(const ChannelInfo& channel)
{
    const std::string size = std::to_string(channel.points) + " x " + std::to_string(channel.lines);
    const bool full = !channel.samples || channel.samples->validSamples == channel.points * channel.lines;
    return full ? size : size + ", " + std::to_string(channel.samples->validSamples) + " valid";
}

std::vector<std::string> Row(std::size_t slot, const ChannelInfo& channel)
{
    const Axis& signal = channel.signalAxis;
    const SampleInfo samples = channel.samples.value_or(SampleInfo());
    return {std::to_string(slot),
            Printable(signal.name) + (channel.isCertain ? "" : uncertain),
            SizeText(channel),
            samples.significantBits ? std::to_string(*samples.significantBits) : none,
            samples.values ? RangeText(samples.values->min, samples.values->max, signal.unit) : none,
            AxisText(signal),
            Printable(channel.pointAxis.name) + ": " + AxisText(channel.pointAxis),
            Printable(channel.lineAxis.name) + ": " + AxisText(channel.lineAxis)};
}

// Slots that follow each other, from `first` to `end`.
std::vector<std::string> EmptyRow(std::size_t first, std::size_t end)
{
    const std::string slot = std::to_string(first);
    return {end - first == 1 ? slot : slot + ".." + std::to_string(end - 1), "(empty)"};
}

// The first slot from this one on that has a channel, or the count of slots.
std::size_t NextChannel(const GroupInfo& group, std::size_t slot)
{
    while (slot < group.channels.size() && !group.channels[slot]) {
        ++slot;
    }
    return slot;
}

std::string GroupText(const GroupInfo& group)
{
    const std::string heading = "\nGroup " + std::to_string(group.id) + ": " + Printable(group.name) + " (logical id " +
                                std::to_string(group.logicalId) + ")\n";
    if (group.channels.empty()) {
        return heading + "  no channels\n";
    }
    TextTable table({"Channel", "Name", "Points x lines", "Bits", "Values", "Signal axis", "Point axis", "Line axis"});
    const std::size_t end = group.channels.size();
    for (std::size_t slot = 0; slot < end; ++slot) {
        const std::size_t next = NextChannel(group, slot);
        if (next > slot) {
            table.Add(EmptyRow(slot, next));
        }
        if (next < end) {
            table.Add(Row(next, *group.channels[next]));
        }
        slot = next;
    }
    return heading + table.Render("  ");
}

std::string NodeHeading(const InfoNode& group)
{
    return Printable(group.name) + (group.isCut ? " (what is inside is not shown)" : "") + "\n";
}

// The names and values of items that follow each other are aligned in columns.
std::string InformationText(const std::vector<InfoNode>& nodes)
{
    std::string text = nodes.empty() ? "" : "\nInformation\n";
    TextTable items;
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        const InfoNode& node = nodes[i];
        const std::string indent(2 * node.depth + 2, ' ');
        if (node.isGroup) {
            text += indent + NodeHeading(node);
            continue;
        }
        items.Add({Printable(node.name), Printable(node.value)});
        if (i + 1 == nodes.size() || nodes[i + 1].isGroup || nodes[i + 1].depth != node.depth) {
            text += std::exchange(items, TextTable()).Render(indent);
        }
    }
    return text;
}

} // namespace

std::string ToTable(const FileInfo& info)
{
    std::string text = "File:    " + Printable(info.file) + "\nVersion: " + std::to_string(info.version) +
                       "\nGroups:  " + std::to_string(info.groups.size()) + "\n";
    for (const GroupInfo& group : info.groups) {
        text += GroupText(group);
    }
    text += info.hasSamples ? bitsNote : notReadNote;
    text += std::any_of(info.groups.begin(), info.groups.end(), HasUncertain) ? uncertainNote : "";
    return text + ViewText(info.viewArea) + ProcessorText(info.processors) + InformationText(info.nodes);
}

} // namespace oxd
