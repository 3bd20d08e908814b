#include "oxd/export/ExportKinds.h"
#include "oxd/export/Labels.h"
#include "oxd/export/drawing/Drawing.h"
#include "oxd/picture/Canvas.h"

namespace oxd {

void WritePicture(ExportJob& job)
{
    const Drawing drawing = DrawChannel(job);
    Canvas canvas(job.picture.ShapeOf(static_cast<int>(drawing.size.columns), static_cast<int>(drawing.size.rows)));
    drawing.draw(canvas);
    job.output.Write(canvas.ToFile(LabelsWithRange(job, drawing.range)));
}

} // namespace oxd
