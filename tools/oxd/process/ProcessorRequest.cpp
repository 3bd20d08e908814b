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

namespace {

constexpr std::array<std::string_view, 3> surfaces{"from-data", "high", "low"};
constexpr std::array<std::string_view, 2> repulsions{"raises", "lowers"};
constexpr std::array<std::string_view, 3> contactLaws{"line", "sphere", "cone"};

} // namespace

const std::array<SettingOption, 11> settingOptions{
    SettingOption{"--range", "Range", "FROM:TO", "slope: the part of each curve to fit; by default, all of it",
                  SettingForm::Range},
    SettingOption{"--baseline", "Baseline", "FROM:TO", "others: where the baseline is; by default, it is looked for",
                  SettingForm::Range},
    SettingOption{"--baseline-share", "BaselineShare", "SHARE",
                  "others: share of each curve in which the baseline is looked for; 0.4", SettingForm::Number},
    SettingOption{"--threshold", "Threshold", "N",
                  "others: how far off the baseline a signal must be, in widths of the noise; 5", SettingForm::Number},
    SettingOption{"--surface", "Surface", "END",
                  "others: where the surface is: from-data, high or low positions; from-data", SettingForm::Choice,
                  surfaces},
    SettingOption{"--repulsion", "Repulsion", "CHANGE",
                  "others: what repulsion does to the signal: raises or lowers it; raises", SettingForm::Choice,
                  repulsions},
    SettingOption{"--law", "ContactLaw", "LAW",
                  "indentation: law that gives the contact point: line, sphere or cone; line", SettingForm::Choice,
                  contactLaws},
    SettingOption{"--fit-share", "FitShare", "SHARE",
                  "indentation: share of the points in contact that the law is fitted to; 0.5", SettingForm::Number},
    SettingOption{"--spring-constant", "SpringConstant", "NUMBER",
                  "others: such as 0.2N/m; by default, Tool/Spring constant", SettingForm::AboveZero},
    SettingOption{"--sensitivity", "Sensitivity", "NUMBER",
                  "others: such as 50nm/V; by default, Tool/Deflection sensitivity", SettingForm::AboveZero},
    SettingOption{"--name", displayNameKey, "TEXT", "What the derived channels are called", SettingForm::Text},
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

// What the two keys of a range end with.
const std::string minEnd = "Min", maxEnd = "Max";

void AddRange(ProcessorRequest& request, const SettingOption& option, const std::string& range)
{
    const auto colon = range.find(':');
    if (colon == std::string::npos) {
        throw WrongSetting(option.key + minEnd, range, "is no range, such as 100nm:300nm");
    }
    AddSetting(request, option.key + minEnd, range.substr(0, colon));
    AddSetting(request, option.key + maxEnd, range.substr(colon + 1));
}

void AddChoice(ProcessorRequest& request, const SettingOption& option, const std::string& name)
{
    const auto found = std::ranges::find(option.choices, name);
    if (found == option.choices.end()) {
        std::string names;
        for (const std::string_view choice : option.choices) {
            names.append(names.empty() ? "" : ", ").append(choice);
        }
        throw WrongSetting(option.key, name, "is none of " + names);
    }
    AddSetting(request, option.key, std::to_string(found - option.choices.begin()));
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
        return known.form == SettingForm::Range ? key == known.key + minEnd || key == known.key + maxEnd
                                                : key == known.key;
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

void AddOption(ProcessorRequest& request, const SettingOption& option, const std::string& value)
{
    if (option.form == SettingForm::Range) {
        AddRange(request, option, value);
    } else if (option.form == SettingForm::Choice) {
        AddChoice(request, option, value);
    } else {
        AddSetting(request, option.key, value);
    }
    const auto number = veltaris::velflexlib::fx::ParseFxProperty(value);
    if (option.form == SettingForm::AboveZero && !(number->value > 0)) {
        throw WrongSetting(option.key, value, "is not above 0");
    }
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
