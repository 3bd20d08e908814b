// The writers of the files that a channel is exported to. Export.cpp has a table of them: a further kind takes a writer
// here and a row there.
#pragma once

#include "oxd/export/drawing/ExportJob.h"

namespace oxd {

// Notes that none of the values is a number, where that is so once all lines were read.
void NoteMissingValues(ExportJob& job);

// Values as text: a row for each line, headed by its position, below a row of the positions of points.
void WriteCsv(ExportJob& job);

// Little-endian numbers, line by line: 32-bit raw samples, and 64-bit real values.
void WriteRawNumbers(ExportJob& job);
void WriteRealNumbers(ExportJob& job);

// Real values of 32 bits as a TIFF file with the scale of the axes.
void WriteTiff(ExportJob& job);

// The same of raw samples: in 16 bits if the upper 16 of all samples say all, else in 32. It reads every line twice.
void WriteRawTiff(ExportJob& job);

// Both kinds of pictures show the first line at the bottom, where the line axis begins. They throw a Failure if there
// is nothing to show.

// A picture of as many pixels as the channel has samples, in 16 bits of grey. It reads every line twice.
void WriteGreyPicture(ExportJob& job);

// A picture in colours with axes and a colour bar, or a plot of lines over their points, those of the other sources
// with those of the first.
void WritePicture(ExportJob& job);

} // namespace oxd
