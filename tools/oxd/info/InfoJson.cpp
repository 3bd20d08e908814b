#include "oxd/info/FileInfo.h"

#include "oxd/system/Text.h"

#include <nlohmann/json.hpp>

#include <utility>

namespace oxd {

namespace {

// Keys keep the order in which they are written here. A number that is not finite becomes null.
using Json = nlohmann::ordered_json;

Json ToJson(const Axis& axis)
{
    return {{"name", axis.name}, {"unit", axis.unit}, {"min", axis.min}, {"range", axis.range}};
}

void AddSamples(const SampleInfo& samples, Json& json)
{
    json["validSamples"] = samples.validSamples;
    json["unreadableLines"] = samples.unreadableLines;
    if (samples.significantBits) {
        json["significantBits"] = *samples.significantBits;
    }
    if (samples.values) {
        json["values"] = {{"min", samples.values->min}, {"max", samples.values->max}};
    }
}

Json ToJson(const ChannelInfo& channel)
{
    Json json{{"name", channel.signalAxis.name},
              {"points", channel.points},
              {"lines", channel.lines},
              {"certain", channel.isCertain},
              {"validSamples", nullptr},
              {"unreadableLines", nullptr},
              {"significantBits", nullptr},
              {"values", nullptr},
              {"signalAxis", ToJson(channel.signalAxis)},
              {"pointAxis", ToJson(channel.pointAxis)},
              {"lineAxis", ToJson(channel.lineAxis)}};
    if (channel.samples) {
        AddSamples(*channel.samples, json);
    }
    return json;
}

Json ToJson(const GroupInfo& group)
{
    Json channels = Json::array();
    for (const auto& channel : group.channels) {
        channels.push_back(channel ? ToJson(*channel) : Json(nullptr));
    }
    return {{"id", group.id}, {"logicalId", group.logicalId}, {"name", group.name}, {"channels", std::move(channels)}};
}

Json ToJson(const auto& optional) requires requires
{
    optional.has_value();
}
{
    return optional ? Json(*optional) : Json(nullptr);
}

Json ToJson(const LinkInfo& link)
{
    return {{"group", ToJson(link.group)},
            {"channel", ToJson(link.channel)},
            {"groupName", ToJson(link.groupName)},
            {"channelName", ToJson(link.channelName)}};
}

Json ToJson(const std::vector<LinkInfo>& links)
{
    Json array = Json::array();
    for (const LinkInfo& link : links) {
        Json json{{"index", link.index}};
        json.update(ToJson(link));
        array.push_back(std::move(json));
    }
    return array;
}

Json ToJson(const ViewInfo& view)
{
    Json parameters = Json::array();
    for (const auto& [code, text] : view.parameters) {
        parameters.push_back({{"lineOperator", code}, {"text", text}});
    }
    return {{"positions", view.positions},
            {"channel", ToJson(view.channel)},
            {"lineOperator", view.lineOperator},
            {"kind", view.kind},
            {"mode", view.mode},
            {"graphMode", view.graphMode},
            {"size", view.size},
            {"aspectRatio", view.aspectRatio},
            {"range", view.range ? Json{{"min", view.range->first}, {"max", view.range->second}} : Json(nullptr)},
            {"parameters", std::move(parameters)}};
}

Json ToJson(const ViewArea& area)
{
    Json views = Json::array();
    for (const ViewInfo& view : area.views) {
        views.push_back(ToJson(view));
    }
    return {{"width", area.width}, {"height", area.height}, {"list", std::move(views)}};
}

Json ToJson(const std::vector<ProcessorInfo>& processors)
{
    Json array = Json::array();
    for (const ProcessorInfo& processor : processors) {
        Json parameters = Json::object();
        for (const ParameterInfo& parameter : processor.parameters) {
            parameters[parameter.key] =
                ToExactText(parameter.value) + (parameter.unit.empty() ? "" : " " + parameter.unit);
        }
        array.push_back({{"positions", processor.positions},
                         {"kind", processor.kind},
                         {"instance", processor.instance},
                         {"name", processor.name},
                         {"enabled", processor.isEnabled},
                         {"parameters", std::move(parameters)},
                         {"inputs", ToJson(processor.inputs)},
                         {"outputs", ToJson(processor.outputs)}});
    }
    return array;
}

Json ToJson(const InfoNode& node)
{
    if (!node.isGroup) {
        return {{"name", node.name}, {"value", node.value}};
    }
    Json group{{"name", node.name}, {"groups", Json::array()}, {"items", Json::array()}};
    if (node.isCut) {
        group["cut"] = true;
    }
    return group;
}

// `path` leads to the group that is being filled. Its pointers stay valid: an array that grows moves its elements, but
// only those of the last group grow, and none of their elements is in the path then.
Json ToJson(const std::vector<InfoNode>& nodes)
{
    Json root{{"groups", Json::array()}};
    std::vector<Json*> path{&root};
    for (const InfoNode& node : nodes) {
        path.resize(node.depth + 1);
        Json& list = path.back()->at(node.isGroup ? "groups" : "items");
        list.push_back(ToJson(node));
        path.push_back(&list.back());
    }
    return std::move(root["groups"]);
}

} // namespace

std::string ToJson(const FileInfo& info, JsonLayout layout)
{
    Json groups = Json::array();
    for (const GroupInfo& group : info.groups) {
        groups.push_back(ToJson(group));
    }
    const Json json{
        {"file", info.file},           {"version", info.version},        {"samplesRead", info.hasSamples},
        {"groups", std::move(groups)}, {"views", ToJson(info.viewArea)}, {"processors", ToJson(info.processors)},
        {"info", ToJson(info.nodes)}};
    const int indent = layout == JsonLayout::Indented ? 2 : -1;
    return json.dump(indent, ' ', false, Json::error_handler_t::replace) + "\n";
}

} // namespace oxd
