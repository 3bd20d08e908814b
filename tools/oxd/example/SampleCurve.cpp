#include "oxd/example/SampleCurve.h"

#include <cmath>

namespace oxd {

namespace {

// A cone of half angle α indents an elastic body by δ with the force 2/π E / (1 - ν²) tan α δ² (Sneddon 1965).
constexpr double twoOverPi = 0.63661977236758134;
constexpr double modulus = 30e6; // Pa
constexpr double poisson = 0.5;
constexpr double tangent = 0.364; // of a half angle of 20°
constexpr double stiffness = twoOverPi * modulus / (1 - poisson * poisson) * tangent;
constexpr double springConstant = 0.2; // N/m, as the measurement information has it

// The deflection once the piezo has moved so far behind the contact point: it bends the cantilever and pushes the tip
// into the surface, until both hold the same force.
double DeflectionBehind(double way)
{
    constexpr double ratio = stiffness / springConstant;
    const double indentation = (std::sqrt(1 + 4 * ratio * way) - 1) / (2 * ratio);
    return way - indentation;
}

} // namespace

SampleCurve::SampleCurve(int line, Noise& noise)
    : m_noise(noise), m_contact(272e-9 + 1e-9 * line), m_adhesion(30e-9 - 0.5e-9 * line)
{
}

// Just above the surface, attraction bends the cantilever with the inverse square of the gap until it grows faster than
// the spring can hold, and the tip snaps in.
double SampleCurve::Approach(double z)
{
    constexpr double snapInGap = 4e-9;
    constexpr double attraction = 8e-27; // cubic metres: deflection times gap squared
    const double gap = m_contact - z;
    if (gap < 0) {
        return Recorded(DeflectionBehind(-gap), z);
    }
    return Recorded(gap <= snapInGap ? -gap : -attraction / (gap * gap), z);
}

// On the way back the tip sticks beyond the point of contact, then lets go at once.
double SampleCurve::Retract(double z)
{
    const double way = z - m_contact;
    if (way > 0) {
        return Recorded(DeflectionBehind(way), z);
    }
    return Recorded(way >= -m_adhesion ? way : 0, z);
}

// What is recorded of a deflection: light that the surface reflects tilts the baseline a little.
double SampleCurve::Recorded(double deflection, double z)
{
    constexpr double baselineSlope = 0.005;
    constexpr double noise = 0.15e-9;
    return deflection + baselineSlope * z + noise * m_noise.Normal();
}

} // namespace oxd
