// Whole files as the model of the library, for what its interface does not offer.
#pragma once

#include "oxd/files/OutputFile.h"
#include "velflexlib/dataset/DataSet.h"

#include <memory>
#include <string>

namespace oxd {

// With its samples. Throws a Failure if the file cannot be read; what is wrong with its header must have been told
// before.
std::unique_ptr<veltaris::velflexlib::dataset::CDataSet> LoadModel(const std::string& file);

// Saves the data set into the file that is to become the output, as the library saves one, and gives the name of that.
// Throws a Failure if it cannot be written.
std::string SaveModel(veltaris::velflexlib::dataset::CDataSet& dataSet, OutputFile& output);

} // namespace oxd
