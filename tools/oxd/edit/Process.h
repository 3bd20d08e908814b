// Runs processors on a file and saves what they derive as channels of another.
#pragma once

#include "oxd/files/OutputFile.h"
#include "oxd/inspection/CarriedSections.h"
#include "oxd/process/ProcessorRequest.h"
#include "oxd/provenance/Step.h"

#include <optional>
#include <string>
#include <vector>

namespace oxd {

enum class ResultForm
{
    None,
    Csv,
    Json
};

struct Processing
{
    std::string file; // stays as it is
    ProcessorRequest request;
    ResultForm form = ResultForm::None;
    bool saves = true; // to the output, or for a dry run to nothing
    Destination output;
    bool isDryRun = false; // writes nothing; the output need not be named then
    bool records = true;   // that it happened, in the measurement information of the output
};

struct ProcessingOutcome
{
    std::string results;               // in the form that was asked for
    std::vector<std::string> messages; // what could not be derived, a sentence each
    bool hasAll = true;                // something was derived from every input
    std::string preview;               // of a dry run
};

// Throws a Failure if nothing can be derived, the output cannot be made, or a file would not keep the record.
ProcessingOutcome Process(const Processing& processing, const CarriedSections& carried);

// The same for a step that was recorded, with this record. Gives the name of the saved file.
std::string RepeatProcessing(const std::string& file, const ProcessorRequest& request, const Step& step,
                             const CarriedSections& carried, OutputFile& output);

} // namespace oxd
