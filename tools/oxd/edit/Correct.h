// Runs every line of a channel through a line operator and saves the outcome as another file.
#pragma once

#include "oxd/files/OutputFile.h"
#include "oxd/inspection/CarriedSections.h"
#include "oxd/library/FindChannel.h"
#include "oxd/library/LineOperators.h"
#include "oxd/library/LineTally.h"

#include <string>

namespace oxd {

struct Correction
{
    ChannelSelection selection; // its file stays as it is
    LineOperator lineOperator;
    Destination output;
    bool isDryRun = false; // writes nothing; the output need not be named then
    bool records = true;   // that it happened, in the measurement information of the output
};

struct Corrected
{
    SkippedLines untouched; // because they cannot be read or are too short for the operator
    std::string preview;    // of a dry run
};

// The output has the sections of the file that are to be carried over. Throws a Failure if it cannot be made, and also
// if a file would not keep the record.
Corrected Correct(const Correction& correction, const CarriedSections& carried);

// Gives the lines that stay as they are.
SkippedLines CorrectLines(Channel channel, const LineOperator& lineOperator);

} // namespace oxd
