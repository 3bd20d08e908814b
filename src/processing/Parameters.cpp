#include "processing/Parameters.h"

#include "processing/CurveReader.h"
#include "processing/ProcessingError.h"
#include "processing/Units.h"
#include "velflexlib/fx/FxProperty.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <string_view>

namespace veltaris::processing {

namespace dataset = velflexlib::dataset;
namespace fx = velflexlib::fx;
using curves::CCurveOptions;
using fx::CFxProperty;

namespace {

constexpr const char* calibrationGroup = "Tool";

double InUnit(std::string_view key, const CFxProperty& property, const std::string& wanted)
{
    const CUnit unit = ReduceUnit(property.unit), wantedUnit = ReduceUnit(wanted);
    if (unit.name != wantedUnit.name)
        throw CParameterError(std::string(key), "is in \"" + property.unit + "\", and has to " +
                                                    (wanted.empty() ? "have no unit" : "be in \"" + wanted + "\""));
    return property.value * unit.factor / wantedUnit.factor;
}

// Of the parameters at this position and the next.
curves::CPositionRange Range(const dataset::CProcessorBase& processor, std::size_t position,
                             const dataset::CDataBuffer& channel)
{
    const auto keyOf = [&](std::size_t at) { return processor.GetKind().parameters[at].key; };
    const auto &from = processor.GetWritten(position), &to = processor.GetWritten(position + 1);
    if (from.has_value() != to.has_value())
        throw CParameterError(std::string(keyOf(position + (from ? 0 : 1))),
                              "is given without " + std::string(keyOf(position + (from ? 1 : 0))));
    if (!from || (from->value == 0 && to->value == 0))
        return {};
    const std::string unit = channel.GetAxisUnit(dataset::pointAxis);
    const auto valueOf = [&](const CFxProperty& end, std::string_view key) {
        return end.unit.empty() ? end.value : InUnit(key, end, unit);
    };
    return {valueOf(*from, keyOf(position)), valueOf(*to, keyOf(position + 1))};
}

// What a force processor knows of the cantilever, or the measurement information instead.
struct Calibration
{
    std::string_view key;
    const CFxProperty& parameter;
    const char* item;
    std::string unit;
};

std::vector<Calibration> CalibrationsFor(const dataset::CForceProcessor& processor, const CUnit& signal)
{
    std::vector<Calibration> calibrations{{"SpringConstant", processor.GetSpringConstant(), "Spring constant", "N/m"}};
    if (signal.name != "m" && signal.name != "N")
        calibrations.push_back(
            {"Sensitivity", processor.GetSensitivity(), "Deflection sensitivity", "m/" + signal.name});
    return calibrations;
}

const dataset::CInfoSetItem* FindItem(const Calibration& calibration, const dataset::CInfoSet& information)
{
    const dataset::CInfoSetItem* const group = information.FindGroup(calibrationGroup, false);
    return group ? group->FindLeaf(calibration.item) : nullptr;
}

// NaN unless it is a number above 0 in that unit.
double ItemValue(const dataset::CInfoSetItem& item, const std::string& unit)
{
    const auto property = fx::ParseFxProperty(item.GetValue());
    const CUnit found = ReduceUnit(property ? property->unit : "");
    return property && found.name == unit && property->value > 0 ? property->value * found.factor : curves::noValue;
}

constexpr const char* outOfBounds = "is out of bounds";

double ValueOf(const Calibration& calibration, const dataset::CInfoSet& information)
{
    if (calibration.parameter.value != 0) {
        const double value = InUnit(calibration.key, calibration.parameter, calibration.unit);
        if (!(value > 0 && std::isfinite(value)))
            throw CParameterError(std::string(calibration.key), outOfBounds);
        return value;
    }
    const dataset::CInfoSetItem* const item = FindItem(calibration, information);
    return item ? ItemValue(*item, calibration.unit) : curves::noValue;
}

// The choice that a number stands for; for a number that is none, one that Check() refuses.
template <class Choice>
Choice ChoiceOf(double number)
{
    constexpr double most = 100;
    const bool isWhole = number >= 0 && number <= most && number == std::floor(number);
    return static_cast<Choice>(isWhole ? static_cast<int>(number) : -1);
}

// A parameter without a unit that is an option of the analysis.
struct PlainOption
{
    std::string_view key;
    void (*set)(CCurveOptions& options, double value);
};

constexpr PlainOption plainOptions[] = {
    {"Threshold", [](CCurveOptions& options, double value) { options.threshold = value; }},
    {"Surface", [](CCurveOptions& options, double value) { options.surface = ChoiceOf<curves::Surface>(value); }},
    {"Repulsion", [](CCurveOptions& options, double value) { options.repulsion = ChoiceOf<curves::Repulsion>(value); }},
    {"BaselineShare", [](CCurveOptions& options, double value) { options.baselineShare = value; }},
    {"ContactLaw", [](CCurveOptions& options, double value) { options.law = ChoiceOf<curves::ContactLaw>(value); }},
    {"FitShare", [](CCurveOptions& options, double value) { options.fitShare = value; }},
};

// Null if the kind has no such parameter.
const CFxProperty* FindParameter(const dataset::CProcessorBase& processor, std::string_view key)
{
    const auto parameters = processor.GetKind().parameters;
    const auto found = std::ranges::find(parameters, key, &dataset::CParameterKind::key);
    return found == parameters.end() ? nullptr
                                     : &processor.GetParameter(static_cast<std::size_t>(found - parameters.begin()));
}

// Sets those options that are parameters of the kind.
void SetPlainOptions(CCurveOptions& options, const dataset::CForceProcessor& processor)
{
    for (const PlainOption& option : plainOptions) {
        const CFxProperty* const parameter = FindParameter(processor, option.key);
        if (parameter == nullptr)
            continue;
        option.set(options, InUnit(option.key, *parameter, ""));
        if (Check(options) != curves::Reason::None)
            throw CParameterError(std::string(option.key), outOfBounds);
    }
}

} // namespace

curves::CPositionRange SlopeRange(const dataset::CProcessorSlope& processor, const dataset::CDataBuffer& channel)
{
    return Range(processor, 0, channel);
}

CCurveOptions ForceOptions(const dataset::CForceProcessor& processor, const dataset::CDataBuffer& channel,
                           const dataset::CInfoSet& information)
{
    CCurveOptions options = OptionsOf(channel);
    options.baselineRange = Range(processor, 0, channel);
    SetPlainOptions(options, processor);
    const CUnit signal = ReduceUnit(channel.GetAxisUnit(dataset::signalAxis));
    const auto calibrations = CalibrationsFor(processor, signal);
    options.calibration.springConstant = ValueOf(calibrations.front(), information);
    const double sensitivity = calibrations.size() > 1 ? ValueOf(calibrations.back(), information)
                               : signal.name == "N"    ? 1 / options.calibration.springConstant
                                                       : 1;
    options.calibration.sensitivity = signal.factor * sensitivity;
    if (Check(options) != curves::Reason::None)
        throw CParameterError("Sensitivity", outOfBounds); // whose reciprocal or multiple no number holds
    return options;
}

std::vector<std::string> UnusableItems(const dataset::CForceProcessor& processor, const dataset::CDataBuffer& channel,
                                       const dataset::CInfoSet& information)
{
    std::vector<std::string> sentences;
    for (const Calibration& calibration :
         CalibrationsFor(processor, ReduceUnit(channel.GetAxisUnit(dataset::signalAxis)))) {
        const dataset::CInfoSetItem* const item =
            calibration.parameter.value == 0 ? FindItem(calibration, information) : nullptr;
        if (item && std::isnan(ItemValue(*item, calibration.unit)))
            sentences.push_back("the information " + std::string(calibrationGroup) + "/" + calibration.item + " is \"" +
                                item->GetValue() + "\", which is not a number above 0 in \"" + calibration.unit +
                                "\", and is not used");
    }
    return sentences;
}

} // namespace veltaris::processing
