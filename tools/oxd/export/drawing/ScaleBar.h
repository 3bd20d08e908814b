// A bar of a round length in a picture of samples, as publications have it in place of axes.
#pragma once

#include "oxd/picture/Canvas.h"
#include "oxd/picture/Scale.h"

#include <string>

namespace oxd {

// Draws it into the lower right corner of the plot, across which `scale` leads, with its length in `unit` above it.
// Draws nothing if the scale has no width.
void DrawScaleBar(Canvas& canvas, const Rectangle& plot, const Scale& scale, const std::string& unit);

} // namespace oxd
