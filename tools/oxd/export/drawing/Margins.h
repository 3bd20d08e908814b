// The room around the plot of a picture.
#pragma once

#include "oxd/export/drawing/ExportJob.h"
#include "oxd/picture/Canvas.h"
#include "oxd/picture/Extent.h"

namespace oxd {

// In pixels. They do not depend on the texts, so that the plots of pictures of one size are in the same place.
inline constexpr int leftMargin = 76;
inline constexpr int topMargin = 42;
inline constexpr int rightMargin = 136;
inline constexpr int bottomMargin = 62;

inline constexpr Extent margins{leftMargin + rightMargin, topMargin + bottomMargin};

inline Extent WithMargins(const Extent& plot)
{
    return {margins.columns + plot.columns, margins.rows + plot.rows};
}

// Above a plot.
inline void DrawTitle(Canvas& canvas, const Rectangle& plot, const ExportJob& job)
{
    canvas.DrawText(job.title, plot.x, topMargin / 2.0, Anchor::Begin, plot.width + rightMargin);
}

} // namespace oxd
