// Runs every line of a channel through a line operator and saves the outcome as another file.
#pragma once

#include "oxd/files/OutputFile.h"
#include "oxd/library/FindChannel.h"
#include "oxd/library/LineOperators.h"
#include "oxd/library/LineTally.h"

namespace oxd {

struct Correction
{
    ChannelSelection selection; // its file stays as it is
    LineOperator lineOperator;
    Destination output;
};

// Gives the lines that stay as they are, because they cannot be read or are too short for the operator. Throws a
// Failure if the output cannot be made.
SkippedLines Correct(const Correction& correction);

} // namespace oxd
