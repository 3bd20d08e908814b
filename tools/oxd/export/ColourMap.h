// Colours for values from 0 to 1 whose lightness grows evenly, so that order shows, also to the colour-blind and in
// print without colours.
#pragma once

#include <cstdint>

namespace oxd {

// 0xAARRGGBB, opaque.
std::uint32_t ColourOf(double fraction);

} // namespace oxd
