#include "oxd/salvage/ValidityMap.h"

#include <nlohmann/json.hpp>

#include <array>
#include <string_view>

namespace oxd {

namespace {

using Json = nlohmann::ordered_json; // keys keep the order in which they are written here

// By the values of the enumerators.
constexpr std::array<std::string_view, 4> lineStates{"saved", "empty", "missing", "uncertain"};
constexpr std::array<std::string_view, 4> headerStates{"asItStands", "repaired", "ambiguous", "cut"};

Json Ranges(const salvage::SalvagedChannel& channel)
{
    Json ranges = Json::array();
    for (const salvage::LineRange& range : channel.ranges) {
        ranges.push_back({{"first", range.first},
                          {"last", range.first + range.count - 1},
                          {"state", lineStates.at(static_cast<std::size_t>(range.state))}});
    }
    return ranges;
}

Json Channels(const salvage::Salvaged& salvaged)
{
    Json channels = Json::array();
    for (const salvage::SalvagedChannel& channel : salvaged.channels) {
        channels.push_back({{"group", channel.group},
                            {"groupName", channel.groupName},
                            {"slot", channel.slot},
                            {"name", channel.name},
                            {"section", channel.section},
                            {"points", channel.points},
                            {"lines", channel.lines},
                            {"savedLines", channel.savedLines},
                            {"outputLines", channel.heldLines},
                            {"ranges", Ranges(channel)}});
    }
    return channels;
}

Json RepairOf(const salvage::Salvaged& salvaged)
{
    if (!salvaged.repair) {
        return nullptr;
    }
    return {{"line", salvaged.repair->line}, {"found", salvaged.repair->found}, {"taken", salvaged.repair->text}};
}

} // namespace

std::string ToJson(const salvage::Salvaged& salvaged, const std::string& file, const std::string& output)
{
    const Json json{{"file", file},
                    {"output", output},
                    {"header", headerStates.at(static_cast<std::size_t>(salvaged.header))},
                    {"repair", RepairOf(salvaged)},
                    {"channels", Channels(salvaged)}};
    return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

} // namespace oxd
