// What is to be exported, and how.
#pragma once

#include "oxd/export/options/PictureOptions.h"
#include "oxd/files/OutputFile.h"
#include "oxd/library/FindChannel.h"
#include "oxd/library/LineOperators.h"

#include <string>
#include <vector>

namespace oxd {

// A plain value.
struct Export
{
    ChannelSelection selection;
    std::vector<std::string> with = {}; // channels of the same group that a picture of curves shows, too
    LineOperator lineOperator = rawData;
    Destination output; // its suffix says what is written
    bool grey = false;  // asks for a picture for programs instead of one for people
    std::string format; // says what is written instead of the suffix; one of ExportFormats(), or empty
    PictureOptions picture = {};
    bool labels = true; // notes down in a picture what it shows
};

} // namespace oxd
