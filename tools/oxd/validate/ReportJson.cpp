#include "oxd/validate/Report.h"

#include <nlohmann/json.hpp>

namespace oxd {

namespace {

using Json = nlohmann::ordered_json; // keys keep the order in which they are written here

Json OrNull(const std::string& text)
{
    return text.empty() ? Json(nullptr) : Json(text);
}

Json ToJson(const inspect::Finding& finding)
{
    return {{"rule", finding.rule->id},           {"severity", NameOf(finding.rule->severity)},
            {"offset", finding.offset},           {"line", finding.line > 0 ? Json(finding.line) : Json(nullptr)},
            {"section", OrNull(finding.section)}, {"key", OrNull(finding.key)},
            {"found", OrNull(finding.found)},     {"taken", OrNull(finding.taken)},
            {"message", finding.sentence}};
}

Json ToJson(const inspect::ChannelSamples& channel)
{
    return {{"group", channel.group},      {"slot", channel.slot},
            {"section", channel.section},  {"name", channel.name},
            {"points", channel.points},    {"lines", channel.lines},
            {"bits", channel.bits},        {"offset", channel.offset},
            {"bytes", channel.bytes},      {"linesThere", channel.linesThere},
            {"certain", channel.isCertain}};
}

Json ToArray(const auto& elements)
{
    Json array = Json::array();
    for (const auto& element : elements) {
        array.push_back(ToJson(element));
    }
    return array;
}

} // namespace

std::string ToJson(const inspect::Inspection& inspection, bool inOneLine)
{
    const SeverityCounts counts = CountFindings(inspection);
    const Json json{{"file", inspection.file},
                    {"opens", inspection.Opens()},
                    {"errors", counts.errors},
                    {"warnings", counts.warnings},
                    {"notes", counts.notes},
                    {"version", inspection.version ? Json(*inspection.version) : Json(nullptr)},
                    {"fileBytes", inspection.fileBytes},
                    {"headerBytes", inspection.headerBytes},
                    {"sampleBytes", inspection.claimedBytes},
                    {"findings", ToArray(inspection.findings)},
                    {"channels", ToArray(inspection.channels)}};
    return json.dump(inOneLine ? -1 : 2, ' ', false, Json::error_handler_t::replace) + "\n";
}

} // namespace oxd
