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
std::uint32_t ReversedHelixColour(double fraction);
std::uint32_t GreyColour(double fraction);
std::uint32_t ReversedGreyColour(double fraction);

// The first one is the default.
inline constexpr std::array colourMaps{
    ColourMap{"cubehelix", HelixColour, "from black by red and ochre to white; the default"},
    ColourMap{"cubehelix_r", ReversedHelixColour, "the same from white to black"},
    ColourMap{"gray", GreyColour, "from black to white"},
    ColourMap{"gray_r", ReversedGreyColour, "from white to black"},
};

} // namespace oxd
