// What is to be exported, and how.
#pragma once

#include "oxd/export/options/PictureOptions.h"
#include "oxd/files/OutputFile.h"
#include "oxd/library/FindChannel.h"
#include "oxd/library/LineOperators.h"

#include <string>
#include <vector>

namespace oxd {

// Which of the kinds of files with one suffix is asked for.
enum class Pixels
{
    Usual,
    Grey, // a .png for programs instead of one for people
    Raw   // a .tif of raw samples instead of values
};

// A plain value.
struct Export
{
    ChannelSelection selection;
    std::vector<std::string> with = {}; // channels of the same group that a picture of curves shows, too
    LineOperator lineOperator = rawData;
    Destination output; // its suffix says what is written
    Pixels pixels = Pixels::Usual;
    std::string format; // says what is written instead of the suffix; one of ExportFormats(), or empty
    PictureOptions picture = {};
    bool labels = true; // notes down in a picture what it shows
};

} // namespace oxd
