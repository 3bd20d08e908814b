#include "oxd/salvage/ValidityMap.h"

#include <algorithm>

namespace oxd {

namespace {

std::uint64_t Count(const salvage::SalvagedChannel& channel, salvage::LineState state)
{
    std::uint64_t count = 0;
    for (const salvage::LineRange& range : channel.ranges) {
        count += range.state == state ? range.count : 0;
    }
    return count;
}

std::string Place(const salvage::SalvagedChannel& channel)
{
    return "group " + std::to_string(channel.group) + " \"" + channel.groupName + "\", channel " +
           std::to_string(channel.slot) + " \"" + channel.name + "\": ";
}

std::string Sentence(const salvage::SalvagedChannel& channel)
{
    const std::string lines = std::to_string(channel.lines);
    if (channel.lines == 0) {
        return Place(channel) + "it has no lines.";
    }
    if (channel.savedLines == channel.lines) {
        return Place(channel) + "all " + lines + " lines are saved.";
    }
    struct
    {
        salvage::LineState state;
        const char* what;
    } const others[] = {{salvage::LineState::Empty, " have no samples"},
                        {salvage::LineState::Missing, " are missing at the end of the file"},
                        {salvage::LineState::Uncertain, " are uncertain"}};
    std::string text = std::to_string(channel.savedLines) + " of " + lines + " lines are saved";
    for (const auto& [state, what] : others) {
        const std::uint64_t count = Count(channel, state);
        text += count > 0 ? ", " + std::to_string(count) + what : "";
    }
    text += channel.heldLines < channel.lines
                ? "; only the first " + std::to_string(channel.heldLines) + " are lines of OUT"
                : "";
    return Place(channel) + text + ".";
}

} // namespace

std::vector<std::string> ToSentences(const salvage::Salvaged& salvaged)
{
    std::vector<std::string> sentences;
    if (salvaged.repair) {
        sentences.push_back("line " + std::to_string(salvaged.repair->line) + " of the header is taken as \"" +
                            salvaged.repair->text + "\" instead of \"" + salvaged.repair->found +
                            "\", since the samples then end where the file ends.");
    } else if (salvaged.header == salvage::HeaderState::Repaired) {
        sentences.emplace_back("the mark at the end of the header is damaged, and the samples behind it are whole.");
    }
    const bool isUncertain = std::any_of(salvaged.channels.begin(), salvaged.channels.end(), [](const auto& channel) {
        return Count(channel, salvage::LineState::Uncertain) > 0;
    });
    if (isUncertain || salvaged.header == salvage::HeaderState::Cut) {
        sentences.push_back(salvaged.doubt);
    }
    for (const salvage::SalvagedChannel& channel : salvaged.channels) {
        sentences.push_back(Sentence(channel));
    }
    return sentences;
}

} // namespace oxd
