// A force curve: the deflection of a cantilever that is brought to a hard surface and taken away again. Lengths are in
// metres; z grows towards the surface, and both ways are given over the same z.
#pragma once

#include "oxd/example/Noise.h"

namespace oxd {

inline constexpr double rampSize = 400e-9;

class SampleCurve
{
public:
    // Each curve meets the surface elsewhere and sticks to it more or less.
    explicit SampleCurve(Noise& noise);

    double Approach(double z);
    double Retract(double z);

private:
    double Recorded(double deflection, double z);

    Noise& m_noise;
    double m_contact;  // z at which the tip touches without being bent
    double m_adhesion; // deflection towards the surface at which it comes off
};

} // namespace oxd
