// Runs every line of a channel through a line operator and saves the outcome as another file.
#pragma once

#include "oxd/library/FindChannel.h"
#include "oxd/library/LineOperators.h"
#include "oxd/library/LineTally.h"

#include <string>

namespace oxd {

struct Correction
{
    ChannelSelection selection; // its file stays as it is
    LineOperator lineOperator;
    std::string output;
};

// Lines that had to stay as they were.
struct UntouchedLines
{
    LineTally tooShort;
    LineTally damaged;
};

// Throws a Failure if the output could not be made.
UntouchedLines Correct(const Correction& correction);

} // namespace oxd
