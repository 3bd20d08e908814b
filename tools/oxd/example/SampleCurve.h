// A force curve: the deflection of a cantilever whose tip, a cone, is brought to a soft surface and taken away again.
// Lengths are in metres; z grows towards the surface, and both ways are given over the same z.
#pragma once

#include "oxd/example/Noise.h"

namespace oxd {

// The length of the way, along z.
inline constexpr double rampSize = 400e-9;

// One curve. Its values are noisy, so asking twice gives different ones; the noise must outlive the curve.
class SampleCurve
{
public:
    // Where the curve meets the surface and how firmly the tip sticks to it depends on the number of its line.
    SampleCurve(int line, Noise& noise);

    // The deflection at a height on the way to the surface, and on the way back.
    double Approach(double z);
    double Retract(double z);

private:
    double Recorded(double deflection, double z);

    Noise& m_noise;
    double m_contact;  // z at which the tip touches without being bent
    double m_adhesion; // deflection towards the surface at which it comes off
};

} // namespace oxd
