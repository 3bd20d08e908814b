#include "oxd/compare/Tolerance.h"

#include <algorithm>
#include <cmath>

namespace oxd {

namespace {

constexpr double rawSpan = 1073741823; // between the lowest and the highest of the 30 bits of a raw sample

// How far apart two neighbouring samples of a channel are, as raw samples: 8 and 16 bits keep only the highest ones.
double RawStep(const SignalScale& scale)
{
    constexpr int rawBits = 30;
    return std::ldexp(1, std::max<int>(0, rawBits - static_cast<int>(scale.bits)));
}

double RealStep(const SignalScale& scale)
{
    return RawStep(scale) * (std::abs(scale.range) / rawSpan);
}

double LargerMagnitude(double a, double b)
{
    return std::max(std::abs(a), std::abs(b));
}

} // namespace

double Distance(double a, double b)
{
    const double distance = std::abs(a - b);
    return std::isnan(distance) ? std::numeric_limits<double>::infinity() : distance;
}

bool AreSame(double a, double b, double allowed, const Tolerance& tolerance)
{
    if (std::isnan(a) || std::isnan(b)) {
        return tolerance.nanEqual && std::isnan(a) && std::isnan(b);
    }
    if (a == b || !std::isfinite(a) || !std::isfinite(b)) {
        return a == b;
    }
    const double scale = std::isfinite(a - b) ? 1 : 0.5; // so that a difference beyond all numbers can be told
    return Distance(a * scale, b * scale) <=
           std::max(allowed * scale, tolerance.relative * LargerMagnitude(a * scale, b * scale));
}

SampleRule::SampleRule(const SignalScale& a, const SignalScale& b, const Tolerance& tolerance)
    : m_tolerance(tolerance),
      m_comparesRaw(a.min == b.min && a.range == b.range && std::isfinite(a.min) && std::isfinite(a.min + a.range)),
      m_isExact(!tolerance.steps && tolerance.absolute == 0 && tolerance.relative == 0)
{
    const auto steps = static_cast<double>(tolerance.steps.value_or(0));
    m_rawSteps = steps * std::max(RawStep(a), RawStep(b));
    m_realSteps = steps * std::max(RealStep(a), RealStep(b));
}

bool SampleRule::AreSame(const Sample& a, const Sample& b) const
{
    if (m_comparesRaw && (a.raw == b.raw || m_isExact)) {
        return a.raw == b.raw;
    }
    return IsWithinSteps(a, b) || oxd::AreSame(a.value, b.value, m_tolerance.absolute, m_tolerance);
}

bool SampleRule::IsWithinSteps(const Sample& a, const Sample& b) const
{
    if (!m_tolerance.steps) {
        return false;
    }
    if (m_comparesRaw) {
        return Distance(a.raw, b.raw) <= m_rawSteps;
    }
    // Values that are a whole number of steps apart are rounded each for itself.
    const double rounding = 4 * std::numeric_limits<double>::epsilon() * LargerMagnitude(a.value, b.value);
    return std::isfinite(a.value) && std::isfinite(b.value) && Distance(a.value, b.value) <= m_realSteps + rounding;
}

} // namespace oxd
