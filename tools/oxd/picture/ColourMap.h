// The colours of a picture. Their lightness changes evenly with the value, so that order shows to the colour-blind,
// too, and in a print without colours.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace oxd {

// The opaque colour, 0xAARRGGBB, of a fraction from 0 to 1.
using ColourOf = std::uint32_t (*)(double fraction);

struct ColourMap
{
    std::string_view name; // on the command line
    ColourOf colour;
    std::string_view description; // in the help
};

std::uint32_t HelixColour(double fraction);
std::uint32_t GreyColour(double fraction);

// Colours 0xRRGGBB at even distances, between which a map goes straight.
using Stops = std::array<std::uint32_t, 17>;
inline constexpr Stops viridis{0x440154, 0x48186A, 0x472D7B, 0x424086, 0x3B528B, 0x33638D, 0x2C728E, 0x26828E, 0x21918C,
                               0x1FA088, 0x28AE80, 0x3FBC73, 0x5EC962, 0x84D44B, 0xADDC30, 0xD8E219, 0xFDE725};
inline constexpr Stops magma{0x000004, 0x0A0822, 0x1D1147, 0x36106B, 0x51127C, 0x6A1C81, 0x832681, 0x9C2E7F, 0xB73779,
                             0xD0416F, 0xE75263, 0xF56B5C, 0xFC8961, 0xFEA772, 0xFEC488, 0xFDE2A3, 0xFCFDBF};
inline constexpr Stops inferno{0x000004, 0x0B0724, 0x210C4A, 0x3D0965, 0x57106E, 0x71196E, 0x8A226A, 0xA32C61, 0xBC3754,
                               0xD24644, 0xE45A31, 0xF1731D, 0xF98E09, 0xFCAC11, 0xF9CB35, 0xF2EA69, 0xFCFFA4};
inline constexpr Stops cividis{0x00224E, 0x002E6A, 0x1A386F, 0x32436D, 0x434E6C, 0x535A6D, 0x61656F, 0x6F7073, 0x7D7C78,
                               0x8C8878, 0x9B9476, 0xABA072, 0xBCAE6C, 0xCDBB63, 0xDEC958, 0xF0D846, 0xFEE838};

std::uint32_t Between(const Stops& stops, double fraction);

template <const Stops& stops>
std::uint32_t Between(double fraction)
{
    return Between(stops, fraction);
}

template <ColourOf colour>
std::uint32_t Reversed(double fraction)
{
    return colour(1 - fraction);
}

// The first one is the default. Each is followed by the same from light to dark.
inline constexpr std::array colourMaps{
    ColourMap{"cubehelix", HelixColour, "from black by red and ochre to white; the default"},
    ColourMap{"cubehelix_r", Reversed<HelixColour>, "the same from white to black"},
    ColourMap{"gray", GreyColour, "from black to white"},
    ColourMap{"gray_r", Reversed<GreyColour>, "from white to black"},
    ColourMap{"viridis", Between<viridis>, "from dark violet by green to yellow"},
    ColourMap{"viridis_r", Reversed<Between<viridis>>, "the same from yellow to violet"},
    ColourMap{"magma", Between<magma>, "from black by purple to pale yellow"},
    ColourMap{"magma_r", Reversed<Between<magma>>, "the same from yellow to black"},
    ColourMap{"inferno", Between<inferno>, "from black by red and orange to pale yellow"},
    ColourMap{"inferno_r", Reversed<Between<inferno>>, "the same from yellow to black"},
    ColourMap{"cividis", Between<cividis>, "from dark blue by grey to yellow"},
    ColourMap{"cividis_r", Reversed<Between<cividis>>, "the same from yellow to blue"},
};

} // namespace oxd
