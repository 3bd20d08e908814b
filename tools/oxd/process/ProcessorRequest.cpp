#include "oxd/process/ProcessorRequest.h"

#include "oxd/inspection/HeaderChannels.h"
#include "oxd/library/FindChannel.h"
#include "oxd/library/KeptText.h"
#include "oxd/system/Failure.h"
#include "velflexlib/dataset/processors/Processors.h"
#include "velflexlib/fx/FxProperty.h"
#include "velstdlib/util/header/VELConfig.h"

#include <algorithm>
#include <atomic>

namespace oxd {

namespace model = veltaris::velflexlib::dataset;

const std::array<KindName, 3> kindNames{
    KindName{"slope", &model::CProcessorSlope::kind, "least-squares slope of each curve, with its standard error"},
    KindName{"adhesion", &model::CProcessorMaxAdhesion::kind, "largest adhesion of each retract, and where it is"},
    KindName{"indentation", &model::CProcessorIndentation::kind,
             "indentation behind the contact point of each approach, and its maximum"},
};

const std::array<SettingOption, 6> settingOptions{
    SettingOption{"--range", "Range", "FROM:TO", "slope: the part of each curve to fit; without it all", true},
    SettingOption{"--baseline", "Baseline", "FROM:TO", "others: where the baseline is; without it, it is looked for",
                  true},
    SettingOption{"--threshold", "Threshold", "N", "others: noise widths from the baseline to what is none; 5", false},
    SettingOption{"--spring-constant", "SpringConstant", "NUMBER",
                  "others: such as 0.2N/m; without it Tool/Spring constant", false},
    SettingOption{"--sensitivity", "Sensitivity", "NUMBER",
                  "others: such as 50nm/V; without it Tool/Deflection sensitivity", false},
    SettingOption{"--name", displayNameKey, "TEXT", "What the derived channels are called", false},
};

namespace {

const model::CProcessorKind& KindOf(const ProcessorRequest& request)
{
    return *std::ranges::find(kindNames, request.kind, &KindName::name)->kind;
}

Failure WrongSetting(const std::string& key, const std::string& value, const std::string& reason)
{
    return {ExitCode::Usage, OptionOf(key) + " \"" + value + "\"", reason};
}

// The header of a file that has only this processor.
std::string HeaderOf(const ProcessorRequest& request)
{
    const model::CProcessorKind& kind = KindOf(request);
    std::string text = "[ProcessorSet]\nProcessorCount=1\nProcessor0=Entry\n[Entry]\nInstanceNo=0\nGUID=";
    text.append(kind.guid).append("\n[ProcessorSet-").append(kind.typeName).append(":0]\n");
    for (const auto& [key, value] : request.settings) {
        text.append(key).append("=").append(value).append("\n");
    }
    text.append("InputCount=").append(std::to_string(request.inputs.size())).append("\n");
    for (std::size_t i = 0; i < request.inputs.size(); ++i) {
        const std::string input = "Input" + std::to_string(i);
        text.append(input).append("Group=").append(std::to_string(request.inputs[i].first)).append("\n");
        text.append(input).append("Channel=").append(std::to_string(request.inputs[i].second)).append("\n");
    }
    return text;
}

} // namespace

std::string OptionOf(const std::string& key)
{
    const auto found = std::ranges::find_if(settingOptions, [&](const SettingOption& known) {
        return known.isRange ? key.starts_with(known.key) : key == known.key;
    });
    return found == settingOptions.end() ? key : found->option;
}

void AddSetting(ProcessorRequest& request, const std::string& key, const std::string& value)
{
    if (request.IsOfFile()) {
        throw WrongSetting(key, value, "is for a processor that --kind names");
    }
    const model::CProcessorKind& kind = KindOf(request);
    const bool isName = key == displayNameKey;
    if (!isName && std::ranges::find(kind.parameters, key, &model::CParameterKind::key) == kind.parameters.end()) {
        throw WrongSetting(key, value, "is no parameter of " + request.kind);
    }
    if (!IsKeptValue(value) || (!isName && !veltaris::velflexlib::fx::ParseFxProperty(value))) {
        throw WrongSetting(key, value, isName ? "a file would not keep it" : "is no number with a unit");
    }
    request.settings.emplace_back(key, value);
}

void AddRange(ProcessorRequest& request, const std::string& prefix, const std::string& range)
{
    const auto colon = range.find(':');
    if (colon == std::string::npos) {
        throw WrongSetting(prefix, range, "is no range, such as 100nm:300nm");
    }
    AddSetting(request, prefix + "Min", range.substr(0, colon));
    AddSetting(request, prefix + "Max", range.substr(colon + 1));
}

void AddInput(ProcessorRequest& request, const inspect::Inspection& inspection, const std::string& input)
{
    const auto slash = input.rfind('/');
    if (slash == std::string::npos) {
        throw Failure(ExitCode::Usage, "input \"" + input + "\"", "is not GROUP/CHANNEL");
    }
    const ChannelSelection wanted{
        .file = inspection.file, .group = input.substr(0, slash), .channel = input.substr(slash + 1)};
    const ChannelPlace place = FindPlace(HeaderChannels(*inspection.dataSet), wanted);
    request.inputs.emplace_back(place.group, place.slot);
}

std::unique_ptr<model::CProcessorSet> MakeProcessors(const ProcessorRequest& request)
{
    const std::atomic<bool> abort = false;
    veltaris::velstdlib::util::CVELOXDConfig document;
    document.GetContent().Parse(HeaderOf(request), abort);
    auto set = std::make_unique<model::CProcessorSet>();
    set->ReadFromFile(document);
    return set;
}

} // namespace oxd
