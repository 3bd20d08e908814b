#include "velflexlib/dataset/samples/SignalScale.h"

#include "velflexlib/dataset/samples/kernels/RawRange.h"
#include "velflexlib/dataset/samples/kernels/SampleKernels.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace veltaris::velflexlib::dataset {

namespace {

constexpr double rawOffset = -static_cast<double>(lowestRaw);

std::int32_t TopBits(double real)
{
    constexpr double lowest = std::numeric_limits<std::int32_t>::min();
    constexpr double highest = std::numeric_limits<std::int32_t>::max();
    if (std::isnan(real))
        return lowestRaw;
    return static_cast<std::int32_t>(std::clamp(real, lowest, highest)) >> spareBits<std::int32_t>;
}

} // namespace

double CSignalScale::ToReal(std::int32_t raw) const
{
    const double max = min + range;
    const double real = min + (max - min) * (raw + rawOffset) / rawSpan;
    // On an axis near the largest double the product overflows, but the quotient does not.
    return std::isfinite(real) ? real : min + (max - min) * ((raw + rawOffset) / rawSpan);
}

// Whether no step of a conversion can overflow or underflow, which is what the vectorised loops ask of an axis: true of
// every axis with extent that measures something physical.
bool CSignalScale::IsOrdinary() const
{
    constexpr double farOff = 0x1p960;
    constexpr double near = 0x1p-900;
    return std::abs(min) < farOff && std::abs(range) < farOff && std::abs(min + range - min) > near;
}

void CSignalScale::ToReal(std::span<const std::int32_t> raw, double* real) const
{
    if (IsOrdinary())
        Kernels().toReal(raw.data(), raw.size(), {min, min + range}, real);
    else
        std::ranges::transform(raw, real, [this](std::int32_t sample) { return ToReal(sample); });
}

void CSignalScale::ToRaw(std::span<const double> real, RealToRawMode mode, std::int32_t* raw) const
{
    if (mode == RealToRawMode::SignalAxis && IsOrdinary())
        Kernels().toRaw(real.data(), real.size(), {min, min + range}, raw);
    else
        std::ranges::transform(real, raw, [&](double value) { return *ToRaw(value, mode); });
}

std::optional<std::int32_t> CSignalScale::ToRaw(double real, RealToRawMode mode) const
{
    switch (mode) {
    case RealToRawMode::SignalAxis:
        return OnSignalAxis(real);
    case RealToRawMode::FullScale:
        return TopBits(real);
    }
    return std::nullopt;
}

std::int32_t CSignalScale::OnSignalAxis(double real) const
{
    const double max = min + range;
    const bool hasExtent = std::isfinite(max) && max != min; // a minimum that is not finite has no finite maximum
    if (!hasExtent || std::isnan(real))
        return lowestRaw;
    const bool rising = max > min;
    if (real >= std::max(min, max))
        return rising ? highestRaw : lowestRaw;
    if (real <= std::min(min, max))
        return rising ? lowestRaw : highestRaw;
    double steps = (real - min) * rawSpan / (max - min);
    if (!std::isfinite(steps)) // as in ToReal
        steps = (real - min) / (max - min) * rawSpan;
    return static_cast<std::int32_t>(std::clamp(steps, 0.0, rawSpan) - rawOffset);
}

} // namespace veltaris::velflexlib::dataset
