// Data sets from files and to files, for tools that work on the model and not through the exported functions.
#pragma once

#include "velflexlib/dataset/DataSet.h"

#include <istream>
#include <memory>
#include <string>

namespace veltaris::transfer {

// Reads header and samples, as the library does when it opens a file. Never null; empty when there is no header. Throws
// what the library meets when it opens such a file.
std::unique_ptr<velflexlib::dataset::CDataSet> LoadDataSet(std::istream& stream, const std::string& fileName);

// Writes what the library writes when it saves the data set, byte for byte. The name is as the library takes names.
// Throws what a save throws.
void SaveDataSet(velflexlib::dataset::CDataSet& dataSet, const std::string& fileName);

} // namespace veltaris::transfer
