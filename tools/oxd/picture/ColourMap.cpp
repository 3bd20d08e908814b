#include "oxd/picture/ColourMap.h"

#include "velstdlib/math/Round.h"

#include <algorithm>
#include <array>
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

// Colours 0xRRGGBB at even distances, between which a map goes straight.
using Stops = std::array<std::uint32_t, 17>;

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

} // namespace

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

std::uint32_t ViridisColour(double fraction)
{
    return Between({0x440154, 0x48186A, 0x472D7B, 0x424086, 0x3B528B, 0x33638D, 0x2C728E, 0x26828E, 0x21918C, 0x1FA088,
                    0x28AE80, 0x3FBC73, 0x5EC962, 0x84D44B, 0xADDC30, 0xD8E219, 0xFDE725},
                   fraction);
}

std::uint32_t MagmaColour(double fraction)
{
    return Between({0x000004, 0x0A0822, 0x1D1147, 0x36106B, 0x51127C, 0x6A1C81, 0x832681, 0x9C2E7F, 0xB73779, 0xD0416F,
                    0xE75263, 0xF56B5C, 0xFC8961, 0xFEA772, 0xFEC488, 0xFDE2A3, 0xFCFDBF},
                   fraction);
}

std::uint32_t InfernoColour(double fraction)
{
    return Between({0x000004, 0x0B0724, 0x210C4A, 0x3D0965, 0x57106E, 0x71196E, 0x8A226A, 0xA32C61, 0xBC3754, 0xD24644,
                    0xE45A31, 0xF1731D, 0xF98E09, 0xFCAC11, 0xF9CB35, 0xF2EA69, 0xFCFFA4},
                   fraction);
}

std::uint32_t CividisColour(double fraction)
{
    return Between({0x00224E, 0x002E6A, 0x1A386F, 0x32436D, 0x434E6C, 0x535A6D, 0x61656F, 0x6F7073, 0x7D7C78, 0x8C8878,
                    0x9B9476, 0xABA072, 0xBCAE6C, 0xCDBB63, 0xDEC958, 0xF0D846, 0xFEE838},
                   fraction);
}

} // namespace oxd
