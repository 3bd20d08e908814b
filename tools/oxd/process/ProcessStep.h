// Runs of processors as steps of how a file came about.
#pragma once

#include "oxd/process/ProcessorRequest.h"
#include "oxd/provenance/Step.h"

#include <string>

namespace oxd {

// The step in which processors are run on the file `source`.
Step DescribeProcessing(const std::string& source, const ProcessorRequest& request);

// Whether processors were run in the step.
bool IsProcessing(const Step& step);

// What it takes to repeat such a step. Throws a Failure that begins with `subject` if a text makes no sense.
ProcessorRequest RequestOf(const Step& step, const std::string& subject);

} // namespace oxd
