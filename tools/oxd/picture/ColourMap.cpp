#include "oxd/picture/ColourMap.h"

#include "velstdlib/math/Round.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace oxd {

namespace {

using veltaris::velstdlib::math::vel_round;

std::uint32_t Byte(double intensity)
{
    return static_cast<std::uint32_t>(vel_round(255 * std::clamp(intensity, 0.0, 1.0)));
}

std::uint32_t Opaque(double red, double green, double blue)
{
    return 0xFF000000U | Byte(red) << 16 | Byte(green) << 8 | Byte(blue);
}

} // namespace

std::uint32_t Between(const Stops& stops, double fraction)
{
    constexpr double most = 255;
    const double place = std::clamp(fraction, 0.0, 1.0) * static_cast<double>(stops.size() - 1);
    const auto first = std::min(static_cast<std::size_t>(place), stops.size() - 2);
    const double share = place - static_cast<double>(first);
    const auto part = [&](unsigned shift) {
        const auto at = [&](std::size_t stop) { return static_cast<double>(stops[stop] >> shift & 0xFFU); };
        return (at(first) + (at(first + 1) - at(first)) * share) / most;
    };
    return Opaque(part(16), part(8), part(0));
}

// A helix around the grey diagonal of the colour cube (D. A. Green, Bull. Astr. Soc. India 39, 289, 2011): the weights
// are those by which the eye sees red, green and blue, so that turning around the diagonal does not change lightness.
std::uint32_t HelixColour(double fraction)
{
    constexpr double darkest = 0.04;
    constexpr double lightest = 0.96;
    constexpr double start = 0.45; // of the helix: 0 is blue, 1 red, 2 green
    constexpr double turns = 0.45;
    constexpr double saturation = 1.1;
    const double lightness = darkest + (lightest - darkest) * fraction;
    const double angle = 2 * std::numbers::pi * (start / 3 + 1 + turns * fraction);
    const double amplitude = saturation * lightness * (1 - lightness) / 2;
    const double c = amplitude * std::cos(angle);
    const double s = amplitude * std::sin(angle);
    const double red = lightness - 0.14861 * c + 1.78277 * s;
    const double green = lightness - 0.29227 * c - 0.90649 * s;
    const double blue = lightness + 1.97294 * c;
    return Opaque(red, green, blue);
}

std::uint32_t GreyColour(double fraction)
{
    return Opaque(fraction, fraction, fraction);
}

} // namespace oxd
