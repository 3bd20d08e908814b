// Writes one channel as a file that other programs read: a picture, a table or bare numbers.
#pragma once

#include "oxd/export/ExportRequest.h"
#include "oxd/library/DataSet.h"
#include "oxd/library/LineTally.h"
#include "oxd/picture/PictureForm.h"

#include <string>
#include <vector>

namespace oxd {

// What the output lacks or does not show. It is complete otherwise.
struct ExportGaps
{
    SkippedLines skipped;
    std::vector<std::string> notes; // a sentence each
};

// Throws a Failure if the output cannot be made. What was there stays then.
ExportGaps ExportChannel(const Export& wanted);

// The same from the file of the selection that is open already.
ExportGaps ExportChannel(const DataSet& dataSet, const Export& wanted);

// The form of the picture that the output is to be. Throws a Failure if it is to be none, or one in grey.
PictureForm FormOf(const Export& wanted);

// Whether the output is to be a page of the whole file, which is not made here but by WritePage.
bool IsPage(const Export& wanted);

// Throws a Failure if something is asked for that a page does not have.
void RequireNothingOfAChannel(const Export& wanted);

// A word for each kind of output, which is its suffix without the dot.
std::vector<std::string> ExportFormats();

// A line of help for each kind of output, under the options that choose it.
std::string DescribeExportKinds();

} // namespace oxd
