#include "oxd/process/ResultTable.h"

#include "curves/Reason.h"
#include "oxd/inspection/UntilNul.h"
#include "oxd/system/Text.h"

#include <nlohmann/json.hpp>

#include <cmath>

namespace oxd {

namespace {

namespace model = veltaris::velflexlib::dataset;
namespace curves = veltaris::curves;
using Json = nlohmann::ordered_json;
using processing::CDerivedCurves;
using processing::CDerivedValues;

Json ToJson(const std::vector<curves::Reason>& reasons)
{
    Json array = Json::array();
    for (const curves::Reason reason : reasons) {
        array.push_back(reason == curves::Reason::None ? Json(nullptr) : Json(curves::TextOf(reason)));
    }
    return array;
}

// A NaN becomes null.
Json ValuesOf(const CDerivedValues& derived)
{
    return derived.values;
}

Json ValuesOf(const CDerivedCurves&)
{
    return nullptr;
}

Json ToJson(const ResultSource& source, const processing::CProcessed& done)
{
    Json quantities = Json::array();
    for (std::size_t i = 0; i < done.channels.size(); ++i) {
        std::visit(
            [&](const auto& derived) {
                quantities.push_back({{"name", derived.name},
                                      {"unit", derived.unit},
                                      {"group", done.places[i].group},
                                      {"channel", done.places[i].slot},
                                      {"values", ValuesOf(derived)},
                                      {"reasons", ToJson(derived.reasons)}});
            },
            done.channels[i]);
    }
    return {{"processor", UntilNul(done.processor->GetDisplayName())},
            {"kind", done.processor->GetKind().typeName},
            {"input", InputName(source, done)},
            {"quantities", std::move(quantities)}};
}

std::string Rows(const std::string& begin, const CDerivedValues& derived)
{
    std::string rows;
    for (std::size_t line = 0; line < derived.values.size(); ++line) {
        const bool isThere = derived.reasons[line] == curves::Reason::None && !std::isnan(derived.values[line]);
        rows.append(begin).append(std::to_string(line)).append(",").append(QuotedCell(derived.name)).append(",");
        rows.append(isThere ? ToExactText(derived.values[line]) : "").append(",").append(QuotedCell(derived.unit));
        rows.append(",");
        if (derived.reasons[line] != curves::Reason::None) {
            rows.append(QuotedCell(std::string(curves::TextOf(derived.reasons[line]))));
        }
        rows.append("\n");
    }
    return rows;
}

} // namespace

std::string InputName(const ResultSource& source, const processing::CProcessed& done)
{
    const auto group = source.dataSet.GetGroup(done.input.group);
    const auto channel = group ? group->GetChannelBuffer(done.input.slot) : nullptr;
    return channel ? UntilNul(group->GetName()) + "/" + UntilNul(channel->GetAxisName(model::signalAxis))
                   : "group " + std::to_string(done.input.group) + ", channel " + std::to_string(done.input.slot);
}

std::string ToCsv(const ResultSource& source)
{
    std::string text = "processor,input,line,quantity,value,unit,reason\n";
    for (const processing::CProcessed& done : source.report.done) {
        const std::string begin =
            QuotedCell(UntilNul(done.processor->GetDisplayName())) + "," + QuotedCell(InputName(source, done)) + ",";
        for (const processing::CDerived& channel : done.channels) {
            if (const auto* const values = std::get_if<CDerivedValues>(&channel)) {
                text += Rows(begin, *values);
            }
        }
    }
    return text;
}

std::string ToJson(const ResultSource& source)
{
    Json results = Json::array();
    for (const processing::CProcessed& done : source.report.done) {
        results.push_back(ToJson(source, done));
    }
    const Json json{{"file", source.file}, {"results", std::move(results)}, {"problems", source.report.problems}};
    return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

} // namespace oxd
