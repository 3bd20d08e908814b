// How large a picture is to be.
#pragma once

#include "oxd/picture/Extent.h"

#include <optional>
#include <string_view>

namespace oxd {

// Of the whole picture, in pixels of 1/96 of an inch.
struct PictureSize
{
    double width = 0;
    std::optional<double> height; // else what follows from the width
};

// WIDTH or WIDTHxHEIGHT, such as 800x600 in pixels, 85mm, 8.5cmx6cm or 4in. Throws a Failure for any other text.
PictureSize ParseSize(std::string_view text);

// The plot that fits into a picture of that size together with its margins: of `ratio`, its height over its width.
// Throws a Failure if it would be too small to be seen, or its picture larger than can be drawn at so many pixels of
// the file for one of the picture.
Extent PlotWithin(const PictureSize& size, const Extent& margins, double ratio, double fineness);

} // namespace oxd
