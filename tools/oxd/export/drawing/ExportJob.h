// The job of writing one channel as a file.
#pragma once

#include "oxd/export/drawing/LineSource.h"
#include "oxd/export/options/PictureOptions.h"
#include "oxd/files/OutputFile.h"
#include "oxd/picture/PictureText.h"

#include <string>
#include <vector>

namespace oxd {

// What a writer works on. It reads every line of `source`, writes to `output`, which the caller closes, and adds to
// `notes`.
struct ExportJob
{
    LineSource& source;
    std::vector<LineSource> others; // that a picture of curves shows as well
    OutputFile& output;
    std::string file;                // that the channel is in, for messages
    std::string title;               // of a picture
    PictureOptions picture;          // how it is to look
    std::vector<PictureText> labels; // that a picture carries
    std::vector<std::string> notes;  // what the reader of the output should know, a sentence each
};

} // namespace oxd
