#include "oxd/export/drawing/Drawing.h"

#include "oxd/system/Failure.h"

namespace oxd {

Drawing DrawChannel(ExportJob& job)
{
    const bool showsCurves = job.picture.curves.value_or(IsOfCurves(job.source.GetChannel()));
    if (!showsCurves && (!job.others.empty() || !job.picture.lines.empty() || job.picture.offset)) {
        throw Failure(ExitCode::Usage, job.file,
                      "--lines, --with and --offset are for pictures of curves; --as curves asks for one");
    }
    return showsCurves ? DrawCurves(job) : DrawColours(job);
}

} // namespace oxd
