#include "curves/CurveOptions.h"

#include <cmath>

namespace veltaris::curves {

namespace {

bool IsShare(double value)
{
    return value > 0 && value <= 1;
}

bool IsWidth(double value)
{
    return value >= 0 && std::isfinite(value);
}

bool IsFactor(double value)
{
    return std::isnan(value) || (value > 0 && std::isfinite(value));
}

template <class Choice>
bool IsOneOf(Choice choice, Choice last)
{
    return choice >= Choice{} && choice <= last;
}

bool AreChoices(const CCurveOptions& options)
{
    return IsOneOf(options.surface, Surface::AtLowPositions) && IsOneOf(options.repulsion, Repulsion::LowersSignal) &&
           IsOneOf(options.law, ContactLaw::Cone);
}

} // namespace

Reason Check(const CCurveOptions& options)
{
    const bool good = AreChoices(options) && Check(options.baselineRange) == Reason::None &&
                      IsShare(options.baselineShare) && IsWidth(options.threshold) && IsWidth(options.signalStep) &&
                      IsShare(options.fitShare) && options.limits.lowest < options.limits.highest &&
                      IsFactor(options.calibration.sensitivity) && IsFactor(options.calibration.springConstant);
    return good ? Reason::None : Reason::BadOptions;
}

Reason Check(const CPositionRange& range)
{
    return std::isfinite(range.from) && std::isfinite(range.to) ? Reason::None : Reason::BadOptions;
}

} // namespace veltaris::curves
