// The steps of a file in its measurement information: a group of all, and in it a group for each.
#pragma once

#include "oxd/inspection/InspectFile.h"
#include "oxd/provenance/Step.h"

#include <string>
#include <vector>

namespace oxd {

// Adds a step behind those that the data set has.
void AppendStep(const DataSet& dataSet, const Step& step);

// The same in the model of a file.
void AppendStep(veltaris::velflexlib::dataset::CInfoSet& information, const Step& step);

// All steps in order; none where nothing was recorded.
std::vector<Step> ReadSteps(const inspect::Inspection& inspection);

// Throws a Failure if the last step that a saved file has is not this one: names that files use themselves, or that
// differ from its own in case only, make a save change them. `output` is what messages call the file.
void RequireRecorded(const Step& step, const std::string& savedFile, const std::string& output);

} // namespace oxd
