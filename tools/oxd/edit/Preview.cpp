#include "oxd/edit/Preview.h"

#include "oxd/inspection/InspectFile.h"
#include "oxd/library/FindChannel.h"
#include "oxd/library/LineOperators.h"
#include "oxd/textdiff/UnifiedText.h"

#include <algorithm>

namespace oxd {

namespace {

// A line that cannot be read is the same in both files.
std::uint64_t ChangedInLine(const Channel& before, const Channel& after, std::uint64_t line)
{
    try {
        const std::vector<std::int32_t> a = before.ReadRaw(line, rawData.code);
        const std::vector<std::int32_t> b = after.ReadRaw(line, rawData.code);
        const std::size_t both = std::min(a.size(), b.size());
        std::uint64_t changed = std::max(a.size(), b.size()) - both;
        for (std::size_t i = 0; i < both; ++i) {
            changed += a[i] == b[i] ? 0U : 1U;
        }
        return changed;
    } catch (const LibraryError&) {
        return 0;
    }
}

std::string ChangedInChannel(const Channel& before, const Channel& after)
{
    std::uint64_t changed = 0;
    const std::uint64_t lines = std::min(before.Lines(), after.Lines());
    for (std::uint64_t line = 0; line < lines; ++line) {
        changed += ChangedInLine(before, after, line);
    }
    if (changed == 0) {
        return {};
    }
    return "group \"" + before.GroupName() + "\", channel \"" + before.Name() + "\": " + std::to_string(changed) +
           " of " + std::to_string(before.Points() * before.Lines()) + " samples change\n";
}

// Both have the same groups, slots and channels.
std::string ChangedSamples(const std::string& file, const std::string& saved)
{
    const DataSet before = DataSet::Open(file);
    const DataSet after = DataSet::Open(saved);
    std::string text;
    const std::vector<std::uint64_t> groupsAfter = GroupIds(after);
    std::size_t position = 0;
    for (const std::uint64_t group : GroupIds(before)) {
        const std::uint64_t slots = before.Call(GetChannelCount, group);
        for (std::uint64_t slot = 0; slot < slots; ++slot) {
            const Channel channel(before, group, slot);
            text += channel.Exists() ? ChangedInChannel(channel, Channel(after, groupsAfter.at(position), slot)) : "";
        }
        ++position;
    }
    return text.empty() ? "no samples change\n" : text;
}

} // namespace

std::string Preview(const std::string& file, const std::string& saved, const std::string& output)
{
    const inspect::Inspection before = InspectQuietly(file);
    const inspect::Inspection after = InspectQuietly(saved);
    return UnifiedDifference({file, before.header}, {output, after.header}) + ChangedSamples(file, saved) + output +
           ": " + std::to_string(after.fileBytes) + " bytes would be written\n";
}

} // namespace oxd
