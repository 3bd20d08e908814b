#include "oxd/doctor/Diagnosis.h"
#include "oxd/system/Text.h"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace oxd {

namespace {

constexpr const char* okWord = "ok       ";
constexpr const char* problemWord = "problem  ";

} // namespace

std::string ToText(const Diagnosis& diagnosis)
{
    std::size_t width = 0;
    for (const Check& check : diagnosis.checks) {
        width = std::max(width, check.name.size());
    }
    std::string text;
    for (const Check& check : diagnosis.checks) {
        const std::string name = check.name + std::string(width - check.name.size() + 2, ' ');
        text += (check.IsOk() ? okWord : problemWord) + name + Printable(check.found) + "\n";
        if (!check.IsOk()) {
            text += std::string(std::string_view(problemWord).size(), ' ') + check.remedy + "\n";
        }
    }
    return text;
}

std::string ToJson(const Diagnosis& diagnosis)
{
    using Json = nlohmann::ordered_json; // keys keep the order in which they are written here
    Json checks = Json::array();
    for (const Check& check : diagnosis.checks) {
        Json json{{"name", check.name}, {"ok", check.IsOk()}, {"found", check.found}};
        if (!check.IsOk()) {
            json["remedy"] = check.remedy;
        }
        checks.push_back(json);
    }
    const bool ok =
        std::all_of(diagnosis.checks.begin(), diagnosis.checks.end(), [](const Check& check) { return check.IsOk(); });
    constexpr int indent = 2;
    return Json{{"ok", ok}, {"checks", checks}}.dump(indent, ' ', false, Json::error_handler_t::replace) + "\n";
}

} // namespace oxd
