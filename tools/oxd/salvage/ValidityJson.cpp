#include "oxd/salvage/ValidityMap.h"

#include <nlohmann/json.hpp>

#include <array>
#include <initializer_list>
#include <string_view>
#include <utility>

namespace oxd {

namespace {

// By the values of the enumerators.
constexpr std::array<std::string_view, 4> lineStates{"saved", "empty", "missing", "uncertain"};
constexpr std::array<std::string_view, 4> headerStates{"asItStands", "repaired", "ambiguous", "cut"};

// Arrays and objects of the JSON library take memory when they are destroyed, and end the process where there is none:
// only texts are left to it.
std::string Quote(std::string_view text)
{
    using Json = nlohmann::json;
    return Json(text).dump(-1, ' ', false, Json::error_handler_t::replace);
}

// Of members whose values are JSON already.
std::string Object(std::initializer_list<std::pair<std::string_view, std::string>> members)
{
    std::string text;
    for (const auto& [name, value] : members) {
        text.append(text.empty() ? "" : ", ").append(Quote(name)).append(": ").append(value);
    }
    return "{" + text + "}";
}

std::string Ranges(const salvage::SalvagedChannel& channel)
{
    std::string text;
    for (const salvage::LineRange& range : channel.ranges) {
        text += text.empty() ? "" : ", ";
        text += Object({{"first", std::to_string(range.first)},
                        {"last", std::to_string(range.first + range.count - 1)},
                        {"state", Quote(lineStates.at(static_cast<std::size_t>(range.state)))}});
    }
    return "[" + text + "]";
}

// In a line for each.
std::string Channels(const salvage::Salvaged& salvaged)
{
    std::string text;
    for (const salvage::SalvagedChannel& channel : salvaged.channels) {
        text += text.empty() ? "\n" : ",\n";
        text += "    " + Object({{"group", std::to_string(channel.group)},
                                 {"groupName", Quote(channel.groupName)},
                                 {"slot", std::to_string(channel.slot)},
                                 {"name", Quote(channel.name)},
                                 {"section", Quote(channel.section)},
                                 {"points", std::to_string(channel.points)},
                                 {"lines", std::to_string(channel.lines)},
                                 {"savedLines", std::to_string(channel.savedLines)},
                                 {"outputLines", std::to_string(channel.heldLines)},
                                 {"ranges", Ranges(channel)}});
    }
    return "[" + text + "\n  ]";
}

std::string RepairOf(const salvage::Salvaged& salvaged)
{
    if (!salvaged.repair) {
        return "null";
    }
    return Object({{"line", std::to_string(salvaged.repair->line)},
                   {"found", Quote(salvaged.repair->found)},
                   {"taken", Quote(salvaged.repair->text)}});
}

} // namespace

std::string ToJson(const salvage::Salvaged& salvaged, const std::string& file, const std::string& output)
{
    return "{\n  \"file\": " + Quote(file) + ",\n  \"output\": " + Quote(output) +
           ",\n  \"header\": " + Quote(headerStates.at(static_cast<std::size_t>(salvaged.header))) +
           ",\n  \"repair\": " + RepairOf(salvaged) + ",\n  \"channels\": " + Channels(salvaged) + "\n}\n";
}

} // namespace oxd
