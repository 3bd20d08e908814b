// The exported functions: they check what they are given, and hand curve after curve to the functions in C++.
#include "curves/Adhesion.h"
#include "curves/Contact.h"
#include "curves/Indentation.h"
#include "curves/Slope.h"
#include "curves/interface/CurveBlock.h"

using namespace veltaris::curves;

const char* VELCurveVersion()
{
    return VELOXD_CURVES_VERSION;
}

const char* VELCurveReasonText(int64_t reason)
{
    const bool isKnown = reason >= 0 && reason < reasonCount;
    return TextOf(static_cast<Reason>(isKnown ? reason : reasonCount)).data();
}

void VELCurveDefaults(VELCurveOptions* options)
{
    if (options != nullptr)
        *options = DefaultOptions();
}

int32_t VELCurveSlopes(const VELCurves* curves, const VELCurveOptions* options, VELSlope* results)
{
    return ForEachCurve(curves, options, results, [](const CCurve& curve, const CAnalysis& analysis, std::size_t) {
        const CSlope slope = FitSlope(curve, analysis.slopeRange, analysis.options.limits);
        return VELSlope{CodeOf(slope.reason), slope.points, slope.slope, slope.error, slope.intercept, slope.residual};
    });
}

int32_t VELCurveBaselines(const VELCurves* curves, const VELCurveOptions* options, VELBaseline* results)
{
    return ForEachCurve(curves, options, results, [](const CCurve& curve, const CAnalysis& analysis, std::size_t) {
        const CBaseline line = FindBaseline(curve, analysis.options);
        return VELBaseline{CodeOf(line.reason), line.points, line.offset, line.tilt, line.noise, line.from, line.to};
    });
}

int32_t VELCurveContacts(const VELCurves* curves, const VELCurveOptions* options, VELContact* results)
{
    return ForEachCurve(curves, options, results, [](const CCurve& curve, const CAnalysis& analysis, std::size_t) {
        const CContact contact = FindContact(curve, FindBaseline(curve, analysis.options), analysis.options);
        return VELContact{CodeOf(contact.reason), contact.points,   contact.position,
                          contact.error,          contact.crossing, contact.slope};
    });
}

int32_t VELCurveAdhesions(const VELCurves* curves, const VELCurveOptions* options, VELAdhesion* results)
{
    return ForEachCurve(curves, options, results, [](const CCurve& curve, const CAnalysis& analysis, std::size_t) {
        const CAdhesion adhesion = MaximumAdhesion(curve, FindBaseline(curve, analysis.options), analysis.options);
        return VELAdhesion{CodeOf(adhesion.reason), adhesion.index,      adhesion.signal, adhesion.error,
                           adhesion.position,       adhesion.deflection, adhesion.force};
    });
}

int32_t VELCurveIndentations(const VELCurves* curves, const VELCurveOptions* options, VELIndentation* results,
                             double* indentations, size_t pitch)
{
    if (!IsOutput(curves, indentations, pitch))
        return VEL_CURVE_BAD_CALL;
    const auto indent = [=](const CCurve& curve, const CAnalysis& analysis, std::size_t row) {
        const CBaseline baseline = FindBaseline(curve, analysis.options);
        const CContact contact = FindContact(curve, baseline, analysis.options);
        const CIndentation result =
            Indent(curve, baseline, contact, analysis.options, RowOf(indentations, pitch, row, curve.signal.size()));
        return VELIndentation{CodeOf(result.reason), result.index,
                              result.largest,        result.error,
                              result.position,       result.deflection,
                              result.force,          result.reason == Reason::None ? contact.position : noValue};
    };
    return ForEachCurve(curves, options, results, indent);
}

int32_t VELCurveForces(const VELCurves* curves, const VELCurveOptions* options, int64_t* reasons, double* forces,
                       size_t pitch)
{
    if (curves == nullptr || !IsOutput(curves, forces, pitch) || (forces == nullptr && curves->curves > 0))
        return VEL_CURVE_BAD_CALL;
    const auto force = [=](const CCurve& curve, const CAnalysis& analysis, std::size_t row) {
        return CodeOf(ForceCurve(curve, FindBaseline(curve, analysis.options), analysis.options,
                                 RowOf(forces, pitch, row, curve.signal.size())));
    };
    return ForEachCurve<ResultsAre::Optional>(curves, options, reasons, force);
}
