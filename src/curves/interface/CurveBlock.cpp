#include "curves/interface/CurveBlock.h"

#include "velstdlib/math/Product.h"

#include <cstdint>

namespace veltaris::curves {

namespace {

bool AreRows(std::size_t rows, std::size_t points, std::size_t pitch)
{
    using velstdlib::math::Product;
    return pitch >= points && Product(rows, Product(pitch, sizeof(double))) <= PTRDIFF_MAX;
}

CCurveOptions OptionsOf(const VELCurveOptions& from)
{
    CCurveOptions options;
    options.surface = static_cast<Surface>(from.surface);
    options.repulsion = static_cast<Repulsion>(from.repulsion);
    options.law = static_cast<ContactLaw>(from.law);
    options.baselineRange = {from.baseline_from, from.baseline_to};
    options.baselineShare = from.baseline_share;
    options.threshold = from.threshold;
    options.signalStep = from.signal_step;
    options.fitShare = from.fit_share;
    options.limits = {from.lowest_signal, from.highest_signal};
    options.calibration = {from.sensitivity, from.spring_constant};
    return options;
}

} // namespace

VELCurveOptions DefaultOptions()
{
    const CCurveOptions options;
    return {sizeof(VELCurveOptions),
            static_cast<std::int32_t>(options.surface),
            static_cast<std::int32_t>(options.repulsion),
            static_cast<std::int32_t>(options.law),
            0,
            0,
            0,
            options.baselineRange.from,
            options.baselineRange.to,
            options.baselineShare,
            options.threshold,
            options.signalStep,
            options.fitShare,
            options.limits.lowest,
            options.limits.highest,
            options.calibration.sensitivity,
            options.calibration.springConstant};
}

std::int32_t Read(const VELCurveOptions* options, CAnalysis& analysis)
{
    if (options == nullptr)
        return VEL_CURVE_OK;
    if (options->size != sizeof(VELCurveOptions))
        return VEL_CURVE_BAD_CALL;
    analysis = {OptionsOf(*options), {options->slope_from, options->slope_to}};
    const bool isGood =
        options->reserved == 0 && Check(analysis.options) == Reason::None && Check(analysis.slopeRange) == Reason::None;
    return isGood ? VEL_CURVE_OK : VEL_CURVE_BAD_OPTIONS;
}

bool IsBlock(const VELCurves* curves)
{
    if (curves == nullptr || !AreRows(curves->curves, curves->points, curves->pitch))
        return false;
    return curves->signal != nullptr || curves->curves == 0 || curves->points == 0;
}

bool IsOutput(const VELCurves* curves, const double* array, std::size_t pitch)
{
    return array == nullptr || (curves != nullptr && AreRows(curves->curves, curves->points, pitch));
}

} // namespace veltaris::curves
