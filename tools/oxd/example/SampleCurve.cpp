#include "oxd/example/SampleCurve.h"

namespace oxd {

SampleCurve::SampleCurve(Noise& noise)
    : m_noise(noise), m_contact(280e-9 + 5e-9 * noise.Normal()), m_adhesion(30e-9 + 3e-9 * noise.Normal())
{
}

// On a hard surface the deflection follows z. Just above it, attraction bends the cantilever with the inverse square
// of the gap until it grows faster than the spring can hold, and the tip snaps in.
double SampleCurve::Approach(double z)
{
    constexpr double snapInGap = 4e-9;
    constexpr double attraction = 8e-27; // cubic metres: deflection times gap squared
    const double gap = m_contact - z;
    return Recorded(gap <= snapInGap ? -gap : -attraction / (gap * gap), z);
}

// On the way back the tip sticks beyond the point of contact, then lets go at once.
double SampleCurve::Retract(double z)
{
    const double stuck = z - m_contact;
    return Recorded(stuck >= -m_adhesion ? stuck : 0, z);
}

// What is recorded of a deflection: light that the surface reflects tilts the baseline a little.
double SampleCurve::Recorded(double deflection, double z)
{
    constexpr double baselineSlope = 0.005;
    constexpr double noise = 0.15e-9;
    return deflection + baselineSlope * z + noise * m_noise.Normal();
}

} // namespace oxd
