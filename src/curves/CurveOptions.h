// What a caller knows of a curve, and how it is to be analysed. The defaults suit a curve whose signal rises when the
// tip presses on the surface, and of which nothing else is known.
#pragma once

#include "curves/Curve.h"
#include "curves/Reason.h"

#include <cstdint>
#include <limits>

namespace veltaris::curves {

// The end of the axis at which the tip touches the surface. From the data it is the end where the signal varies more:
// see FindSurface(). A caller that knows the end should say so, since a curve without contact tells nothing.
enum class Surface : std::int32_t
{
    FromData = 0,
    AtHighPositions = 1, // the piezo's extension brings the tip to the surface
    AtLowPositions = 2,
};

// What happens to the signal when the surface pushes the tip away.
enum class Repulsion : std::int32_t
{
    RaisesSignal = 0,
    LowersSignal = 1,
};

// 1 if the surface raises the signal, else -1.
constexpr double SignOf(Repulsion repulsion)
{
    return repulsion == Repulsion::RaisesSignal ? 1 : -1;
}

// How the signal grows behind the contact point, which is found by extrapolating that law back to the baseline. On a
// hard surface the deflection grows with the position; an elastic one is indented, and the deflection grows with a
// power of the indentation. The two powers take the sensitivity.
enum class ContactLaw : std::int32_t
{
    Line = 0,   // signal ~ position
    Sphere = 1, // deflection ~ indentation^(3/2): Hertz
    Cone = 2,   // deflection ~ indentation^2: Sneddon
};

// What turns the signal into a deflection and a deflection into a force. A NaN stands for unknown.
struct CCalibration
{
    // Metres of deflection for a unit of the signal, above 0. 1 if the signal is a deflection in metres, and the
    // reciprocal of the spring constant if it is a force in newtons.
    double sensitivity = std::numeric_limits<double>::quiet_NaN();
    // Newtons per metre of deflection, above 0.
    double springConstant = std::numeric_limits<double>::quiet_NaN();
};

// A signal at or beyond either of these is saturated: how large it really was is not known. As bounds of the signal
// axis are known to the caller alone, there are none by default.
struct CSignalLimits
{
    double lowest = -std::numeric_limits<double>::infinity();
    double highest = std::numeric_limits<double>::infinity();
};

struct CCurveOptions
{
    Surface surface = Surface::FromData;
    Repulsion repulsion = Repulsion::RaisesSignal;
    ContactLaw law = ContactLaw::Line;

    // Where the baseline is looked for. If this is the whole curve, it is the share `baselineShare` of the stretch
    // between the first and the last acquired point, at the end away from the surface. A share is above 0 and at
    // most 1.
    CPositionRange baselineRange;
    double baselineShare = 0.4;

    // How far from the baseline a signal must be to be none of it, in noise widths; at least 0.
    double threshold = 5;

    // The difference between neighbouring values that the signal can have; at least 0. Noise is taken to be no less
    // than that of rounding to such steps, signalStep / sqrt(12).
    double signalStep = 0;

    // The contact law is fitted to this share of the points behind the contact, those that are next to it. Above 0 and
    // at most 1.
    double fitShare = 0.5;

    CSignalLimits limits;
    CCalibration calibration;
};

// Reason::BadOptions if a number is outside the bounds above, else Reason::None.
Reason Check(const CCurveOptions& options);

// The same, for a range: both ends must be finite.
Reason Check(const CPositionRange& range);

} // namespace veltaris::curves
