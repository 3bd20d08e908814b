#include "processing/Parameters.h"

#include "processing/CurveReader.h"
#include "processing/ProcessingError.h"
#include "processing/Units.h"
#include "velflexlib/fx/FxProperty.h"

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
        throw CParameterError(std::string(key), "is in \"" + property.unit + "\", and has to be in \"" + wanted + "\"");
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

double ValueOf(const Calibration& calibration, const dataset::CInfoSet& information)
{
    if (calibration.parameter.value != 0)
        return InUnit(calibration.key, calibration.parameter, calibration.unit);
    const dataset::CInfoSetItem* const item = FindItem(calibration, information);
    return item ? ItemValue(*item, calibration.unit) : curves::noValue;
}

// The last one is to blame if neither of those before is.
void RequireBounds(const CCurveOptions& options)
{
    if (Check(options) == curves::Reason::None)
        return;
    const auto isBad = [](const auto& change) {
        CCurveOptions alone;
        change(alone);
        return Check(alone) != curves::Reason::None;
    };
    const bool isThreshold = isBad([&](CCurveOptions& alone) { alone.threshold = options.threshold; });
    const bool isSpring =
        isBad([&](CCurveOptions& alone) { alone.calibration.springConstant = options.calibration.springConstant; });
    throw CParameterError(isThreshold ? "Threshold" : isSpring ? "SpringConstant" : "Sensitivity", "is out of bounds");
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
    options.threshold = InUnit("Threshold", processor.GetThreshold(), "");
    const CUnit signal = ReduceUnit(channel.GetAxisUnit(dataset::signalAxis));
    const auto calibrations = CalibrationsFor(processor, signal);
    options.calibration.springConstant = ValueOf(calibrations.front(), information);
    const double sensitivity = calibrations.size() > 1 ? ValueOf(calibrations.back(), information)
                               : signal.name == "N"    ? 1 / options.calibration.springConstant
                                                       : 1;
    options.calibration.sensitivity = signal.factor * sensitivity;
    RequireBounds(options);
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
