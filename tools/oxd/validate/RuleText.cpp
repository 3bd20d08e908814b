#include "oxd/validate/RuleText.h"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace oxd {

namespace {

using Json = nlohmann::ordered_json; // keys keep the order in which they are written here
using veltaris::inspect::Rule;

constexpr std::size_t lineWidth = 80;

// The text behind a label, broken between words into lines of equal indentation.
std::string Paragraph(std::string label, std::string_view text)
{
    constexpr std::size_t indent = 10;
    label.resize(indent, ' ');
    std::string lines = label;
    std::size_t column = indent;
    while (!text.empty()) {
        const std::size_t length = std::min(text.find(' '), text.size());
        if (column > indent && column + 1 + length > lineWidth) {
            lines += "\n" + std::string(indent, ' ');
            column = indent;
        } else if (column > indent) {
            lines += ' ';
            ++column;
        }
        lines += text.substr(0, length);
        column += length;
        text.remove_prefix(std::min(length + 1, text.size()));
    }
    return lines + "\n";
}

Json AsJson(const Rule& rule)
{
    return {{"id", rule.id},
            {"severity", NameOf(rule.severity)},
            {"stopsOpening", rule.stopsOpening},
            {"title", rule.title},
            {"cause", rule.cause},
            {"example", rule.example},
            {"remedy", rule.remedy}};
}

std::string Dump(const Json& json)
{
    return json.dump(2) + "\n";
}

} // namespace

std::string ToText(const Rule& rule)
{
    std::string severity(NameOf(rule.severity));
    severity += rule.stopsOpening ? "; the file does not open" : "";
    return std::string(rule.id) + ": " + std::string(rule.title) + "\n\n" + Paragraph("Severity", severity) +
           Paragraph("Cause", rule.cause) + Paragraph("Example", rule.example) + Paragraph("Remedy", rule.remedy);
}

std::string ToText(std::span<const Rule> rules)
{
    constexpr std::size_t width = 9;
    std::string text;
    for (const Rule& rule : rules) {
        std::string severity(NameOf(rule.severity));
        severity.resize(width, ' ');
        text.append(rule.id).append("  ").append(severity).append(rule.title).append("\n");
    }
    return text;
}

std::string ToJson(const Rule& rule)
{
    return Dump(AsJson(rule));
}

std::string ToJson(std::span<const Rule> rules)
{
    Json array = Json::array();
    std::transform(rules.begin(), rules.end(), std::back_inserter(array), AsJson);
    return Dump(array);
}

} // namespace oxd
