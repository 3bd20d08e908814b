// The colours of a picture. Their lightness grows evenly with the value, so that order shows to the colour-blind, too,
// and in a print without colours.
#pragma once

#include <cstdint>

namespace oxd {

// The opaque colour, 0xAARRGGBB, of a fraction from 0 (darkest) to 1 (lightest).
std::uint32_t ColourOf(double fraction);

} // namespace oxd
