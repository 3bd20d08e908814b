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
std::uint32_t ViridisColour(double fraction);
std::uint32_t MagmaColour(double fraction);
std::uint32_t InfernoColour(double fraction);
std::uint32_t CividisColour(double fraction);

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
    ColourMap{"viridis", ViridisColour, "from dark violet by green to yellow"},
    ColourMap{"viridis_r", Reversed<ViridisColour>, "the same from yellow to violet"},
    ColourMap{"magma", MagmaColour, "from black by purple to pale yellow"},
    ColourMap{"magma_r", Reversed<MagmaColour>, "the same from yellow to black"},
    ColourMap{"inferno", InfernoColour, "from black by red and orange to pale yellow"},
    ColourMap{"inferno_r", Reversed<InfernoColour>, "the same from yellow to black"},
    ColourMap{"cividis", CividisColour, "from dark blue by grey to yellow"},
    ColourMap{"cividis_r", Reversed<CividisColour>, "the same from yellow to blue"},
};

} // namespace oxd
