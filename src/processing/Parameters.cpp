#include "processing/Parameters.h"

#include "processing/CurveReader.h"
#include "processing/ProcessingError.h"
#include "velflexlib/fx/FxProperty.h"

#include <string>

namespace veltaris::processing {

namespace dataset = velflexlib::dataset;
namespace fx = velflexlib::fx;
using fx::CFxProperty;

namespace {

constexpr const char* calibrationGroup = "Tool";
constexpr const char* springConstantItem = "Spring constant";
constexpr const char* sensitivityItem = "Deflection sensitivity";

void RequireUnit(const std::string& what, const CFxProperty& property, const std::string& unit)
{
    if (property.unit != unit)
        throw CProcessingError(what + " is in \"" + property.unit + "\", and has to be in \"" + unit + "\"");
}

curves::CPositionRange Range(const std::string& what, const CFxProperty& from, const CFxProperty& to,
                             const dataset::CDataBuffer& channel)
{
    const curves::CPositionRange range{from.value, to.value};
    if (!range.IsWhole()) {
        const std::string unit = channel.GetAxisUnit(dataset::pointAxis);
        RequireUnit("the begin of its " + what, from, unit);
        RequireUnit("the end of its " + what, to, unit);
    }
    return range;
}

// NaN unless the item has a number above 0 in that unit.
double ItemValue(const dataset::CInfoSet& information, const char* name, const std::string& unit)
{
    const dataset::CInfoSetItem* const group = information.FindGroup(calibrationGroup, false);
    const dataset::CInfoSetItem* const item = group ? group->FindLeaf(name) : nullptr;
    const auto property = item ? fx::ParseFxProperty(item->GetValue()) : std::nullopt;
    return property && property->unit == unit && property->value > 0 ? property->value : curves::noValue;
}

struct CalibrationItem
{
    const CFxProperty& parameter;
    const char* what;
    const char* item;
};

double Calibration(const CalibrationItem& known, const std::string& unit, const dataset::CInfoSet& information)
{
    if (known.parameter.value == 0)
        return ItemValue(information, known.item, unit);
    RequireUnit(known.what, known.parameter, unit);
    return known.parameter.value;
}

} // namespace

curves::CPositionRange SlopeRange(const dataset::CProcessorSlope& processor, const dataset::CDataBuffer& channel)
{
    return Range("range", processor.GetRangeMin(), processor.GetRangeMax(), channel);
}

curves::CCurveOptions ForceOptions(const dataset::CForceProcessor& processor, const dataset::CDataBuffer& channel,
                                   const dataset::CInfoSet& information)
{
    curves::CCurveOptions options = OptionsOf(channel);
    options.baselineRange = Range("baseline range", processor.GetBaselineMin(), processor.GetBaselineMax(), channel);
    RequireUnit("its threshold", processor.GetThreshold(), "");
    options.threshold = processor.GetThreshold().value;
    const double springConstant =
        Calibration({processor.GetSpringConstant(), "its spring constant", springConstantItem}, "N/m", information);
    options.calibration.springConstant = springConstant;
    const std::string unit = channel.GetAxisUnit(dataset::signalAxis);
    options.calibration.sensitivity =
        unit == "m" ? 1
        : unit == "N"
            ? 1 / springConstant
            : Calibration({processor.GetSensitivity(), "its sensitivity", sensitivityItem}, "m/" + unit, information);
    if (const curves::Reason reason = Check(options); reason != curves::Reason::None)
        throw CProcessingError("a parameter is out of bounds");
    return options;
}

} // namespace veltaris::processing
