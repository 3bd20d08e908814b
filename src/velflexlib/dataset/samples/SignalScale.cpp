#include "velflexlib/dataset/samples/SignalScale.h"

#include "velflexlib/dataset/samples/DataRange.h"
#include "velflexlib/dataset/samples/kernels/SampleKernels.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace veltaris::velflexlib::dataset {

namespace {

constexpr double rawOffset = -static_cast<double>(CRawRange::lowestPossible);
constexpr double rawSpan = static_cast<double>(CRawRange::highestPossible) + rawOffset; // 2^30 - 1

std::int32_t TopBits(double real)
{
    constexpr double lowest = std::numeric_limits<std::int32_t>::min();
    constexpr double highest = std::numeric_limits<std::int32_t>::max();
    if (std::isnan(real))
        return CRawRange::lowestPossible;
    return static_cast<std::int32_t>(std::clamp(real, lowest, highest)) >> 2;
}

} // namespace

double CSignalScale::ToReal(std::int32_t raw) const
{
    const double max = min + range;
    const double real = min + (max - min) * (raw + rawOffset) / rawSpan;
    // On an axis near the largest double the product overflows, the quotient does not.
    return std::isfinite(real) ? real : min + (max - min) * ((raw + rawOffset) / rawSpan);
}

// Nothing can overflow or underflow in a conversion: true of all axes that have extent, but absurd ones.
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
    const bool hasExtent = std::isfinite(min) && std::isfinite(max) && max != min;
    if (!hasExtent || std::isnan(real))
        return CRawRange::lowestPossible;
    const bool rising = max > min;
    if (real >= std::max(min, max))
        return rising ? CRawRange::highestPossible : CRawRange::lowestPossible;
    if (real <= std::min(min, max))
        return rising ? CRawRange::lowestPossible : CRawRange::highestPossible;
    double steps = (real - min) * rawSpan / (max - min);
    if (!std::isfinite(steps)) // an axis near the largest double: the product overflows, the quotient does not
        steps = (real - min) / (max - min) * rawSpan;
    return static_cast<std::int32_t>(std::clamp(steps, 0.0, rawSpan) - rawOffset);
}

} // namespace veltaris::velflexlib::dataset
