#include "oxd/info/ViewTable.h"

#include "oxd/info/TextTable.h"
#include "oxd/library/LineOperators.h"
#include "oxd/system/Text.h"
#include "oxd/system/Unit.h"

namespace oxd {

namespace {

constexpr const char* nothing = "-";

std::string PositionText(const std::vector<std::uint64_t>& positions)
{
    const std::string first = std::to_string(positions.front());
    return positions.size() == 1 ? first : first + " and " + std::to_string(positions.size() - 1) + " more";
}

std::string OperatorText(int code)
{
    const auto* const known = std::ranges::find(lineOperators, code, &LineOperator::code);
    return known == lineOperators.end() ? nothing : std::string(known->name);
}

// Adds a text to those before it.
void Join(std::string& texts, const std::string& text)
{
    texts.append(texts.empty() ? "" : ", ").append(text);
}

std::string OrNone(const std::string& text)
{
    return text.empty() ? nothing : Printable(text);
}

std::string Joined(const std::vector<LinkInfo>& links)
{
    std::string text;
    for (const LinkInfo& link : links) {
        Join(text, LinkText(link));
    }
    return OrNone(text);
}

std::string ParameterText(const ViewInfo& view)
{
    std::string text;
    for (const auto& [code, parameter] : view.parameters) {
        Join(text, (code == rawData.code ? "raw" : OperatorText(code)) + " " + parameter);
    }
    return OrNone(text);
}

std::string ParameterText(const ProcessorInfo& processor)
{
    std::string text;
    for (const ParameterInfo& parameter : processor.parameters) {
        if (parameter.isGiven) {
            Join(text, parameter.key + " " + ToText(parameter.value, parameter.unit));
        }
    }
    return OrNone(text);
}

} // namespace

std::string ViewText(const ViewArea& area)
{
    if (area.views.empty()) {
        return {};
    }
    TextTable table(
        {"View", "Channel", "Operator", "Kind", "Mode", "Graph", "Size", "Aspect ratio", "Range", "Parameters"});
    for (const ViewInfo& view : area.views) {
        table.Add(
            {PositionText(view.positions), Printable(LinkText(view.channel)), OperatorText(view.lineOperator),
             std::to_string(view.kind), std::to_string(view.mode), std::to_string(view.graphMode),
             std::to_string(view.size), std::to_string(view.aspectRatio),
             view.range ? std::to_string(view.range->first) + " .. " + std::to_string(view.range->second) : "automatic",
             ParameterText(view)});
    }
    return "\nViews (" + std::to_string(area.width) + " x " + std::to_string(area.height) + ")\n" + table.Render("  ");
}

std::string ProcessorText(const std::vector<ProcessorInfo>& processors)
{
    if (processors.empty()) {
        return {};
    }
    TextTable table({"Processor", "Kind", "Name", "State", "Inputs", "Outputs", "Parameters"});
    for (const ProcessorInfo& processor : processors) {
        table.Add({PositionText(processor.positions), processor.kind + ":" + std::to_string(processor.instance),
                   Printable(processor.name), processor.isEnabled ? "enabled" : "disabled", Joined(processor.inputs),
                   Joined(processor.outputs), ParameterText(processor)});
    }
    return "\nProcessors\n" + table.Render("  ");
}

} // namespace oxd
