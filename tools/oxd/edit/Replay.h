// Repeats the steps that a file says it was made by.
#pragma once

#include "oxd/inspection/InspectFile.h"
#include "oxd/library/FindChannel.h"

#include <string>
#include <vector>

namespace oxd {

// Of the file that the steps are repeated on.
struct ReplayOriginal
{
    const inspect::Inspection& inspection;
    bool trust; // takes samples that may not be those of their channel
};

struct ReplayOutcome
{
    bool isSame;          // the steps give the file byte for byte
    std::string sentence; // what they do
};

// Repeats the steps that `made` has beyond those of the original, in a file for that, and compares the bytes. Throws a
// Failure if there is nothing to repeat or it makes no sense.
ReplayOutcome Replay(const inspect::Inspection& made, const ReplayOriginal& original);

} // namespace oxd
