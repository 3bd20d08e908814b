#include "processing/Computations.h"

#include "curves/Adhesion.h"
#include "curves/Indentation.h"
#include "curves/Slope.h"
#include "processing/CurveReader.h"
#include "processing/Parameters.h"
#include "processing/ProcessingError.h"
#include "processing/Units.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace veltaris::processing {

namespace dataset = velflexlib::dataset;
using curves::CCurve;
using curves::CCurveOptions;
using curves::Reason;
using dataset::CDataBuffer;

namespace {

template <class Use>
void ForEachCurve(const CDataBuffer& input, const CWatch& watch, Use use)
{
    CCurveReader reader(input);
    const std::uint64_t lines = input.GetLines();
    for (std::uint64_t line = 0; line < lines && !watch.abort; ++line) {
        use(reader.Read(line));
        watch.advance();
    }
}

// What keeps the curve from being read is passed on to all that rests on the baseline.
curves::CBaseline BaselineOf(const CReading& reading, const CCurveOptions& options)
{
    return reading.obstacle == Reason::None ? FindBaseline(reading.curve, options)
                                            : curves::CBaseline{reading.obstacle};
}

std::string QuotientUnit(const std::string& numerator, const std::string& denominator)
{
    if (numerator == denominator)
        return {};
    return denominator.empty() ? numerator : (numerator.empty() ? "1" : numerator) + "/" + denominator;
}

std::vector<CDerived> DeriveSlope(const dataset::CProcessorBase& processor, const CDataBuffer& input,
                                  const dataset::CInfoSet&, const CWatch& watch)
{
    const auto range = SlopeRange(dynamic_cast<const dataset::CProcessorSlope&>(processor), input);
    const curves::CSignalLimits limits = OptionsOf(input).limits;
    const std::string& name = processor.GetDisplayName();
    const std::string unit =
        QuotientUnit(input.GetAxisUnit(dataset::signalAxis), input.GetAxisUnit(dataset::pointAxis));
    CDerivedValues slope{name, unit, {}}, error{name + " error", unit, {}};
    ForEachCurve(input, watch, [&](const CReading& reading) {
        const curves::CSlope fitted = reading.obstacle == Reason::None ? FitSlope(reading.curve, range, limits)
                                                                       : curves::CSlope{reading.obstacle};
        slope.Add(fitted.slope, fitted.reason);
        error.Add(fitted.error, fitted.reason);
    });
    return {std::move(slope), std::move(error)};
}

// A signal as what it is known to measure.
struct Quantity
{
    std::string unit;
    double factor = 1; // from the unit of the signal
};

Quantity QuantityOf(const curves::CCalibration& calibration, const CDataBuffer& input)
{
    if (std::isnan(calibration.sensitivity))
        return {input.GetAxisUnit(dataset::signalAxis), 1};
    if (std::isnan(calibration.springConstant))
        return {"m", calibration.sensitivity};
    return {"N", calibration.sensitivity * calibration.springConstant};
}

std::vector<CDerived> DeriveAdhesion(const dataset::CProcessorBase& processor, const CDataBuffer& input,
                                     const dataset::CInfoSet& information, const CWatch& watch)
{
    const auto& force = dynamic_cast<const dataset::CForceProcessor&>(processor);
    const CCurveOptions options = ForceOptions(force, input, information);
    const Quantity quantity = QuantityOf(options.calibration, input);
    const std::string& name = processor.GetDisplayName();
    CDerivedValues adhesion{name, quantity.unit, {}}, error{name + " error", quantity.unit, {}};
    CDerivedValues position{name + " position", input.GetAxisUnit(dataset::pointAxis), {}};
    ForEachCurve(input, watch, [&](const CReading& reading) {
        const curves::CAdhesion found = MaximumAdhesion(reading.curve, BaselineOf(reading, options), options);
        adhesion.Add(found.signal * quantity.factor, found.reason);
        error.Add(found.error * quantity.factor, found.reason);
        position.Add(found.position, found.reason);
    });
    return {std::move(adhesion), std::move(error), std::move(position)};
}

// An indentation is at most as large as the longest way of the piezo and what the cantilever can bend.
dataset::CSignalScale IndentationScale(const CDataBuffer& input, const CCurveOptions& options, double metres)
{
    double way = std::fabs(input.GetAxis(dataset::pointAxis).range);
    for (std::uint64_t line = 0; line < input.GetLines(); ++line) {
        const double own = std::fabs(input.GetLineAxis(line).range);
        if (std::isfinite(own))
            way = std::max(way, own);
    }
    const double bend = std::fabs(input.GetAxis(dataset::signalAxis).range) * options.calibration.sensitivity;
    const double most = way * metres + (std::isnan(bend) ? 0 : bend);
    return ScaleAround(-most, most);
}

// How many of them the unit of a point axis is.
double Metres(const std::string& unit)
{
    const CUnit reduced = ReduceUnit(unit);
    if (reduced.name != "m")
        throw CProcessingError("the point axis of its input is in \"" + unit + "\", and an indentation takes one in m");
    return reduced.factor;
}

std::vector<CDerived> DeriveIndentation(const dataset::CProcessorBase& processor, const CDataBuffer& input,
                                        const dataset::CInfoSet& information, const CWatch& watch)
{
    const double metres = Metres(input.GetAxisUnit(dataset::pointAxis));
    CCurveOptions options = ForceOptions(dynamic_cast<const dataset::CForceProcessor&>(processor), input, information);
    options.baselineRange = {options.baselineRange.from * metres, options.baselineRange.to * metres};
    const std::string& name = processor.GetDisplayName();
    CDerivedCurves indentation{name, "m", IndentationScale(input, options, metres)};
    CDerivedValues largest{name + " maximum", "m", {}}, error{name + " maximum error", "m", {}};
    CDerivedValues contact{name + " contact point", "m", {}}, contactError{name + " contact point error", "m", {}};
    std::vector<double> depths(input.GetPoints());
    ForEachCurve(input, watch, [&](const CReading& read) {
        const curves::CAxis& axis = read.curve.axis;
        const CCurve curve{read.curve.signal, {axis.start * metres, axis.step * metres}};
        const curves::CBaseline baseline = BaselineOf({curve, read.obstacle}, options);
        const curves::CContact point = FindContact(curve, baseline, options);
        const curves::CIndentation found = Indent(curve, baseline, point, options, depths);
        indentation.Add(depths, axis, found.reason);
        largest.Add(found.largest, found.reason);
        error.Add(found.error, found.reason);
        contact.Add(point.position, point.reason);
        contactError.Add(point.error, point.reason);
    });
    return {std::move(indentation), std::move(largest), std::move(error), std::move(contact), std::move(contactError)};
}

struct Computation
{
    std::string_view kind; // by its identifier
    std::vector<CDerived> (*derive)(const dataset::CProcessorBase&, const CDataBuffer&, const dataset::CInfoSet&,
                                    const CWatch&);
};

constexpr std::array computations{
    Computation{dataset::CProcessorSlope::kind.guid, DeriveSlope},
    Computation{dataset::CProcessorMaxAdhesion::kind.guid, DeriveAdhesion},
    Computation{dataset::CProcessorIndentation::kind.guid, DeriveIndentation},
};

} // namespace

std::vector<CDerived> Derive(const dataset::CProcessorBase& processor, const CDataBuffer& input,
                             const dataset::CInfoSet& information, const CWatch& watch)
{
    const auto* const found = std::ranges::find(computations, processor.GetKind().guid, &Computation::kind);
    if (found == computations.end())
        throw CProcessingError("nobody knows what it computes");
    if (!HasUsableSignal(input))
        throw CProcessingError("the signal axis of its input is not finite, has no extent or is too large");
    return found->derive(processor, input, information, watch);
}

} // namespace veltaris::processing
