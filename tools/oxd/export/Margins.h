// The room around the plot of a picture.
#pragma once

#include "oxd/picture/Canvas.h"

namespace oxd {

// In pixels. They do not depend on the texts, so that the plots of pictures of one size are in the same place.
inline constexpr int leftMargin = 76;
inline constexpr int topMargin = 42;
inline constexpr int rightMargin = 136;
inline constexpr int bottomMargin = 62;

// A canvas with a plot of that size, and the title above it.
inline Canvas CanvasAround(const Rectangle& plot, const std::string& title)
{
    Canvas canvas(leftMargin + static_cast<int>(plot.width) + rightMargin,
                  topMargin + static_cast<int>(plot.height) + bottomMargin);
    canvas.DrawText(title, plot.x, topMargin / 2.0, Anchor::Begin, plot.width + rightMargin);
    return canvas;
}

} // namespace oxd
