#include "oxd/commandline/JsonLine.h"

#include <nlohmann/json.hpp>

namespace oxd {

std::string JsonLine(std::initializer_list<std::pair<std::string_view, std::string_view>> members)
{
    nlohmann::ordered_json object;
    for (const auto& [key, value] : members) {
        object[std::string(key)] = value;
    }
    return object.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace) + "\n";
}

} // namespace oxd
