#include "oxd/process/ProcessStep.h"

#include "oxd/system/Failure.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <string_view>

namespace oxd {

namespace {

// Names and texts of a step in files, which stay what they are for good.
constexpr const char* processors = "Processors";
constexpr const char* ofFile = "those of the file";
constexpr const char* inputItem = "Input"; // a group and a channel by their positions, such as 2/0

std::optional<std::pair<std::uint64_t, std::uint64_t>> ParseInput(std::string_view text)
{
    std::pair<std::uint64_t, std::uint64_t> place;
    const char* const end = text.data() + text.size();
    const auto group = std::from_chars(text.data(), end, place.first);
    if (group.ec != std::errc() || group.ptr == end || *group.ptr != '/') {
        return std::nullopt;
    }
    const auto channel = std::from_chars(group.ptr + 1, end, place.second);
    return channel.ec == std::errc() && channel.ptr == end ? std::optional(place) : std::nullopt;
}

std::string ValueOf(const Step& step, const std::string& name)
{
    const auto found = std::ranges::find_if(step.items, [&](const auto& item) { return item.first == name; });
    return found == step.items.end() ? std::string() : found->second;
}

// The settings that may stand in a step are the parameters of all kinds, and the name.
bool IsSetting(const std::string& name)
{
    return name == displayNameKey || std::ranges::any_of(kindNames, [&](const KindName& known) {
               return std::ranges::any_of(known.kind->parameters,
                                          [&](const auto& parameter) { return parameter.key == name; });
           });
}

void RepeatSetting(ProcessorRequest& request, const std::string& name, const std::string& value,
                   const std::string& subject)
{
    try {
        AddSetting(request, name, value);
    } catch (const Failure&) {
        throw Failure(ExitCode::Damaged, subject, "its provenance has no " + name + " that could be repeated");
    }
}

} // namespace

Step DescribeProcessing(const std::string& source, const ProcessorRequest& request)
{
    Step step = DescribeOrigin(source);
    step.items.emplace_back(processors, request.IsOfFile() ? ofFile : request.kind);
    for (std::size_t i = 0; i < request.inputs.size(); ++i) {
        const auto& [group, channel] = request.inputs[i];
        step.items.emplace_back(inputItem + std::string(" ") + std::to_string(i),
                                std::to_string(group) + "/" + std::to_string(channel));
    }
    step.items.insert(step.items.end(), request.settings.begin(), request.settings.end());
    return step;
}

bool IsProcessing(const Step& step)
{
    return !ValueOf(step, processors).empty();
}

ProcessorRequest RequestOf(const Step& step, const std::string& subject)
{
    const std::string kind = ValueOf(step, processors);
    ProcessorRequest request{kind == ofFile ? "" : kind};
    if (!request.IsOfFile() && std::ranges::find(kindNames, kind, &KindName::name) == kindNames.end()) {
        throw Failure(ExitCode::Damaged, subject, "its provenance has no Processors that could be run again");
    }
    for (const auto& [name, value] : step.items) {
        if (name.starts_with(std::string(inputItem) + " ")) {
            const auto place = ParseInput(value);
            if (!place) {
                throw Failure(ExitCode::Damaged, subject, "its provenance has no " + name + " that could be repeated");
            }
            request.inputs.push_back(*place);
        } else if (IsSetting(name)) {
            RepeatSetting(request, name, value, subject);
        }
    }
    return request;
}

} // namespace oxd
