// Writes one channel as a file that other programs read: a picture, a table or bare numbers.
#pragma once

#include "oxd/library/FindChannel.h"
#include "oxd/library/LineOperators.h"
#include "oxd/library/LineTally.h"

#include <string>
#include <vector>

namespace oxd {

struct Export
{
    ChannelSelection selection;
    LineOperator lineOperator = rawData;
    std::string output; // its suffix says what is written
    bool grey = false;  // a picture for programs instead of one for people
};

// What the output lacks or does not show.
struct ExportGaps
{
    LineTally tooShort;
    LineTally damaged;
    std::vector<std::string> notes; // a sentence each
};

// Throws a Failure if the output could not be made.
ExportGaps ExportChannel(const Export& wanted);

} // namespace oxd
