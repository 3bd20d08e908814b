#include "oxd/export/Drawing.h"

#include "oxd/export/Labels.h"
#include "oxd/system/Failure.h"

namespace oxd {

Drawing DrawChannel(ExportJob& job)
{
    const bool showsCurves = job.picture.curves.value_or(IsOfCurves(job.source.GetChannel()));
    if (!showsCurves && (!job.others.empty() || !job.picture.lines.empty())) {
        throw Failure(ExitCode::Usage, job.file,
                      "--lines and --with are for pictures of curves; --as curves asks for one");
    }
    return showsCurves ? DrawCurves(job) : DrawColours(job);
}

void WritePicture(ExportJob& job)
{
    const Drawing drawing = DrawChannel(job);
    Canvas canvas(job.picture.ShapeOf(static_cast<int>(drawing.size.columns), static_cast<int>(drawing.size.rows)));
    drawing.draw(canvas);
    job.output.Write(canvas.ToFile(LabelsWithRange(job, drawing.range)));
}

} // namespace oxd
