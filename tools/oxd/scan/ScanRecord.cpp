#include "oxd/scan/ScanRecord.h"

#include "oxd/files/FilePath.h"
#include "oxd/inspection/FindingText.h"
#include "oxd/inspection/HeaderNode.h"
#include "oxd/inspection/InspectFile.h"
#include "oxd/provenance/Sha256.h"
#include "oxd/system/Failure.h"

#include <nlohmann/json.hpp>

#include <array>
#include <map>
#include <utility>
#include <vector>

namespace oxd {

namespace {

namespace model = veltaris::velflexlib::dataset;

// Keys keep the order in which they are written here. A number that is not finite becomes null.
using Json = nlohmann::ordered_json;

template <class Value>
struct Member
{
    const char* key;
    Value value;
};

template <class Value>
Member(const char*, Value) -> Member<Value>;

// Values are moved to where they stay. An initializer list makes an array of each member first, which takes longer than
// reading the header.
template <class... Values>
Json ObjectOf(Member<Values>... members)
{
    Json::object_t object;
    object.reserve(sizeof...(members));
    (object.emplace_back(members.key, Json(std::move(members.value))), ...);
    return object;
}

// Items deeper than this are left out: paths would grow without bound.
constexpr std::size_t deepestItem = 200;

Json AxisJson(const model::CAxis& axis)
{
    return ObjectOf(Member{"name", UntilNul(axis.name)}, Member{"unit", UntilNul(axis.unit)}, Member{"min", axis.min},
                    Member{"range", axis.range});
}

Json ChannelJson(const inspect::ChannelSamples& samples, const model::CDataBuffer& channel)
{
    return ObjectOf(Member{"slot", samples.slot}, Member{"name", UntilNul(channel.GetAxis(model::signalAxis).name)},
                    Member{"points", channel.GetPoints()}, Member{"lines", channel.GetLines()},
                    Member{"bits", samples.bits}, Member{"certain", samples.isCertain},
                    Member{"signalAxis", AxisJson(channel.GetAxis(model::signalAxis))},
                    Member{"pointAxis", AxisJson(channel.GetAxis(model::pointAxis))},
                    Member{"lineAxis", AxisJson(channel.GetAxis(model::lineAxis))});
}

Json GroupsJson(const inspect::Inspection& inspection)
{
    const std::vector<int> ids = inspection.dataSet->GetAllGroupIds();
    const auto groups = inspection.dataSet->GetAllGroups();
    Json json = Json::array();
    for (std::size_t position = 0; position < ids.size(); ++position) {
        const model::CDataGroup& group = *groups[position];
        json.push_back(ObjectOf(Member{"id", ids[position]}, Member{"logicalId", group.GetLogicalGroupId()},
                                Member{"name", UntilNul(group.GetName())}, Member{"channels", Json::array()}));
    }
    for (const inspect::ChannelSamples& samples : inspection.channels) {
        const auto channel = groups.at(samples.group)->GetChannelBuffers().at(samples.slot);
        if (channel) {
            json.at(samples.group).at("channels").push_back(ChannelJson(samples, *channel));
        }
    }
    return json;
}

// All items in order, each with the names of the groups that lead to it and its own. The groups that lead to the
// current node are on a stack made here, because a file may nest groups deeper than calls can be nested.
Json InformationJson(const inspect::Inspection& inspection)
{
    Json items = Json::array();
    std::vector<std::pair<HeaderNode, std::size_t>> levels{{HeaderNode::Root(*inspection.dataSet), 0}};
    std::vector<std::string> path;
    while (!levels.empty()) {
        auto& [group, next] = levels.back();
        path.resize(levels.size() - 1);
        if (next == group.ChildCount()) {
            levels.pop_back();
            continue;
        }
        const HeaderNode node = group.Child(next++);
        path.push_back(node.Name());
        if (!node.IsGroup()) {
            items.push_back(ObjectOf(Member{"path", Json(path)}, Member{"value", node.Value()}));
        } else if (levels.size() < deepestItem) {
            levels.emplace_back(node, 0);
        }
    }
    return items;
}

void AddFindings(const inspect::Inspection& inspection, Json& json)
{
    std::array<std::uint64_t, 3> bySeverity{};
    std::map<std::string_view, std::uint64_t> byRule;
    for (const inspect::Finding& finding : inspection.findings) {
        ++bySeverity.at(static_cast<std::size_t>(finding.rule->severity));
        ++byRule[finding.rule->id];
    }
    json["notes"] = bySeverity[0];
    json["warnings"] = bySeverity[1];
    json["errors"] = bySeverity[2];
    json["findings"] = Json::object();
    for (const auto& [rule, count] : byRule) {
        json["findings"][std::string(rule)] = count;
    }
}

// What stays the same when a file is moved or copied: the size and the header, with all that it says of the samples.
std::string ContentId(const inspect::Inspection& inspection)
{
    Sha256 sum;
    sum.Add(std::to_string(inspection.fileBytes) + "\n");
    sum.Add(inspection.header);
    return sum.HexDigest();
}

void AddContent(const inspect::Inspection& inspection, Json& json)
{
    RequireOpens(inspection);
    json["id"] = ContentId(inspection);
    json["headerBytes"] = inspection.headerBytes;
    json["version"] = inspection.version.value_or(0);
    AddFindings(inspection, json);
    json["groups"] = GroupsJson(inspection);
    json["info"] = InformationJson(inspection);
}

std::string Line(const Json& json)
{
    return json.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n";
}

// Without what may have been added before the failure.
std::string FailedLine(const Json& json, const std::string& message)
{
    const std::string subject = json.at("path").get<std::string>() + ": ";
    return Line({{"path", json.at("path")},
                 {"size", json.at("size")},
                 {"modified", json.at("modified")},
                 {"error", message.starts_with(subject) ? message.substr(subject.size()) : message}});
}

} // namespace

std::string ScanRecord(const FoundFile& found, std::optional<FileTime> since)
{
    const std::string name = ToUtf8(found.path);
    Json json{{"path", name}, {"size", nullptr}, {"modified", nullptr}};
    if (found.problem) {
        return FailedLine(json, *found.problem);
    }
    std::error_code error;
    const std::filesystem::directory_entry entry(found.path, error);
    if (const auto modified = entry.last_write_time(error); !error) {
        json["modified"] = ToText(ToFileTime(modified));
        if (since && ToFileTime(modified) < *since) {
            return {};
        }
    }
    if (const auto size = entry.file_size(error); !error) {
        json["size"] = size;
    }
    try {
        AddContent(InspectFile(name), json);
    } catch (const Failure& failure) {
        return FailedLine(json, failure.what());
    }
    return Line(json);
}

} // namespace oxd
