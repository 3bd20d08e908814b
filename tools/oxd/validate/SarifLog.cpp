#include "oxd/validate/SarifLog.h"

#include "oxd/validate/FileUri.h"

#include <nlohmann/json.hpp>

namespace oxd {

namespace {

using Json = nlohmann::ordered_json; // keys keep the order in which they are written here

// The name of the format, by which programs know it.
constexpr const char* schemaName =
    "https://docs.oasis-open.org/sarif/sarif/v2.1.0/errata01/os/schemas/sarif-schema-2.1.0.json";

Json Message(std::string_view text)
{
    return {{"text", text}};
}

Json Descriptor(const inspect::Rule& rule)
{
    return {{"id", rule.id},
            {"shortDescription", Message(rule.title)},
            {"fullDescription", Message(rule.cause)},
            {"help", Message(rule.remedy)},
            {"defaultConfiguration", {{"level", NameOf(rule.severity)}}}};
}

Json AllRulesAsJson()
{
    Json rules = Json::array();
    for (const inspect::Rule& rule : inspect::AllRules()) {
        rules.push_back(Descriptor(rule));
    }
    return rules;
}

// Without a region the whole file is meant.
Json Location(const std::string& file, const Json& region = nullptr)
{
    Json place{{"artifactLocation", {{"uri", FileUri(file)}}}};
    if (!region.is_null()) {
        place["region"] = region;
    }
    return {{"physicalLocation", place}};
}

// A line of text, or else a byte of what is not text.
Json Region(const inspect::Finding& finding)
{
    return finding.line > 0 ? Json{{"startLine", finding.line}} : Json{{"byteOffset", finding.offset}};
}

Json Result(const std::string& file, const inspect::Finding& finding)
{
    return {{"ruleId", finding.rule->id},
            {"ruleIndex", finding.rule - inspect::AllRules().data()},
            {"level", NameOf(finding.rule->severity)},
            {"message", Message(finding.sentence)},
            {"locations", Json::array({Location(file, Region(finding))})}};
}

} // namespace

struct SarifLog::Content
{
    std::string toolVersion;
    Json results = Json::array();
    Json failures = Json::array();
};

SarifLog::SarifLog(const std::string& toolVersion) : m_content(std::make_unique<Content>())
{
    m_content->toolVersion = toolVersion;
}

SarifLog::~SarifLog() = default;

void SarifLog::Add(const inspect::Inspection& inspection)
{
    for (const inspect::Finding& finding : inspection.findings) {
        m_content->results.push_back(Result(inspection.file, finding));
    }
}

void SarifLog::AddFailure(const std::string& file, const std::string& reason)
{
    m_content->failures.push_back(
        {{"level", "error"}, {"message", Message(reason)}, {"locations", Json::array({Location(file)})}});
}

std::string SarifLog::Text() const
{
    const Json driver{{"name", "oxd validate"}, {"version", m_content->toolVersion}, {"rules", AllRulesAsJson()}};
    const Json invocation{{"executionSuccessful", m_content->failures.empty()},
                          {"toolExecutionNotifications", m_content->failures}};
    const Json run{
        {"tool", {{"driver", driver}}}, {"invocations", Json::array({invocation})}, {"results", m_content->results}};
    const Json log{{"$schema", schemaName}, {"version", "2.1.0"}, {"runs", Json::array({run})}};
    return log.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

} // namespace oxd
