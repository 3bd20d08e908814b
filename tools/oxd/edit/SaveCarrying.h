// Saves edited files with all that their originals hold.
#pragma once

#include "oxd/inspection/CarriedSections.h"
#include "oxd/library/DataSet.h"

#include <string>

namespace oxd {

// Puts the sections into the header of a file that the library has saved for the output. Throws a Failure if it cannot
// be written, or would not open any more.
void InsertSections(const CarriedSections& carried, const std::string& saved, OutputFile& output);

// Saves the data set together with sections of the file that it comes from, and gives the name of the saved file.
std::string SaveCarrying(const CarriedSections& carried, DataSet& dataSet, OutputFile& output);

} // namespace oxd
