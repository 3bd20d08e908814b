// Runs the processors of a data set: each derives channels from its connected inputs, which become its outputs.
//
// Nothing here is run when a file is opened; a program asks for it.
#pragma once

#include "processing/Computations.h"
#include "processing/Placement.h"
#include "processing/RunOrder.h"
#include "velflexlib/dataset/DataSet.h"

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace veltaris::processing {

// What came of one input of a processor.
struct CProcessed
{
    const velflexlib::dataset::CProcessorBase* processor = nullptr;
    CPlace input;                   // where it was read
    std::vector<CDerived> channels; // without the samples of curves, which the data set has
    std::vector<CPlace> places;     // of each
};

struct CProcessingReport
{
    std::vector<CProcessed> done;
    std::vector<std::string> problems; // a sentence for each input that nothing was derived from
    // Keys of parameters that do not suit an input, with the reasons, which are among the problems, too.
    std::vector<std::pair<std::string, std::string>> unsuited;
    std::vector<std::string> notes; // for each output that is not at its address and each item that is not usable
    // Empty slots that the run has made for outputs that never came.
    CPlacement::Addresses gaps = {};
    bool isAborted = false; // nothing was derived from the input at work, nor from those behind it
};

// The enabled ones, in the order of their list; entries that share a section are one processor, and run once. They
// refer to the set.
Processors EnabledProcessors(const velflexlib::dataset::CProcessorSet& set);

// Runs the processors in the order of what they read and write. A processor does the same with each of its inputs: with
// n outputs for one, input i has the outputs from i n on. Slots are kept free for all outputs but those with the
// addresses `unreserved`: a run that left gaps can be repeated without them, on the data set as it was before. Throws
// CProcessingError where no order is possible, and std::bad_alloc.
CProcessingReport Run(const Processors& processors, velflexlib::dataset::CDataSet& dataSet, const CWatch& watch,
                      const CPlacement::Addresses& unreserved = {});

// How many lines all inputs have together that are there now, for a bar of progress.
std::uint64_t CountLines(const Processors& processors, const velflexlib::dataset::CDataSet& dataSet);

} // namespace veltaris::processing
