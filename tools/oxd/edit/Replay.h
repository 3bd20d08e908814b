// Repeats the steps that a file says it was made by.
#pragma once

#include "oxd/inspection/InspectFile.h"

#include <string>

namespace oxd {

struct ReplayOutcome
{
    bool isSame;          // the steps give the file byte for byte
    std::string sentence; // what they do
};

// Repeats the steps that `made` has beyond those of the original, in a file for that, and compares the bytes. Throws a
// Failure if there is nothing to repeat or it makes no sense.
ReplayOutcome Replay(const inspect::Inspection& made, const inspect::Inspection& original);

} // namespace oxd
