#include "oxd/compare/Comparison.h"

#include <nlohmann/json.hpp>

#include <cmath>

namespace oxd {

namespace {

// Keys keep the order in which they are written here.
using Json = nlohmann::ordered_json;

// JSON has no word for a number that is not finite: it becomes a text.
Json NumberToJson(double number)
{
    if (std::isfinite(number)) {
        return number;
    }
    return std::isnan(number) ? "nan" : number > 0 ? "inf" : "-inf";
}

Json ToJson(const Content& content)
{
    if (const auto* const number = std::get_if<double>(&content)) {
        return NumberToJson(*number);
    }
    if (const auto* const count = std::get_if<std::uint64_t>(&content)) {
        return *count;
    }
    const auto* const text = std::get_if<std::string>(&content);
    return text != nullptr ? Json(*text) : Json(nullptr);
}

Json ToJson(const Occurrence& occurrence)
{
    Json json;
    if (occurrence.line) {
        json["line"] = *occurrence.line;
    }
    if (occurrence.point) {
        json["point"] = *occurrence.point;
    }
    json["a"] = ToJson(occurrence.a);
    json["b"] = ToJson(occurrence.b);
    if (occurrence.raw) {
        json["rawA"] = occurrence.raw->a;
        json["rawB"] = occurrence.raw->b;
    }
    return json;
}

Json ToJson(const Numbered& part)
{
    return {{"position", part.position}, {"name", part.name}};
}

Json ToJson(const Difference& difference)
{
    Json json{{"aspect", NameOf(difference.aspect)}, {"what", difference.what}};
    if (difference.place.group) {
        json["group"] = ToJson(*difference.place.group);
    }
    if (difference.place.channel) {
        json["channel"] = ToJson(*difference.place.channel);
    }
    if (difference.aspect == Aspect::Information) {
        json["path"] = difference.place.path;
    }
    if (!difference.IsOfLines()) {
        json.update(ToJson(difference.largest));
        return json;
    }
    json["unit"] = difference.unit;
    json["count"] = difference.count;
    json["largest"] = ToJson(difference.largest);
    json["largest"]["difference"] = NumberToJson(difference.largestMagnitude);
    json["shown"] = Json::array();
    for (const Occurrence& occurrence : difference.shown) {
        json["shown"].push_back(ToJson(occurrence));
    }
    return json;
}

Json ToJson(const ComparisonOptions& options)
{
    Json compared = Json::array();
    for (const Aspect aspect : options.aspects) {
        compared.push_back(NameOf(aspect));
    }
    const Tolerance& tolerance = options.tolerance;
    return {{"compared", compared},
            {"tolerance",
             {{"steps", tolerance.steps ? Json(*tolerance.steps) : Json(nullptr)},
              {"absolute", tolerance.absolute},
              {"relative", tolerance.relative},
              {"nanEqual", tolerance.nanEqual}}}};
}

} // namespace

std::string ToJson(const Comparison& comparison, const ComparisonOptions& options)
{
    Json json{{"a", comparison.a}, {"b", comparison.b}, {"same", comparison.differences.empty()}};
    json.update(ToJson(options));
    json["differences"] = Json::array();
    for (const Difference& difference : comparison.differences) {
        json["differences"].push_back(ToJson(difference));
    }
    json["problems"] = comparison.problems;
    constexpr int indent = 2;
    return json.dump(indent, ' ', false, Json::error_handler_t::replace) + "\n";
}

} // namespace oxd
