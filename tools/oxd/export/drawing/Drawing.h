// Pictures of a channel as something that can be drawn anywhere: alone in a file, or among others on a sheet.
#pragma once

#include "oxd/export/drawing/ExportJob.h"
#include "oxd/picture/Canvas.h"
#include "oxd/picture/Extent.h"
#include "oxd/picture/Scale.h"

#include <functional>

namespace oxd {

// Holds what it shows. `draw` draws it from the origin of the canvas on, and uses the job, which must outlive it.
struct Drawing
{
    Extent size; // in pixels
    Scale range; // of the values
    std::function<void(Canvas& canvas)> draw;
};

// Read every line of the job's source. Throw a Failure if there is no value to show.
Drawing DrawColours(ExportJob& job);
Drawing DrawCurves(ExportJob& job); // of the source and of the others

// The one of them that suits the channel, or that was asked for. Throws a Failure if what was asked for is of the
// other.
Drawing DrawChannel(ExportJob& job);

// Whether the lines of a channel are curves or a profile rather than rows of an image: they are one or two, or what
// tells them apart has no unit.
bool IsOfCurves(const Channel& channel);

} // namespace oxd
