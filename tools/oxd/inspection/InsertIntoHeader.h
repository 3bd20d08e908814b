// Adds sections to a header that the library has written.
#pragma once

#include "oxd/files/OutputFile.h"

#include <string>

namespace oxd {

// Puts whole lines behind the last one of the header of a file that was saved for the output, ahead of the empty line
// that its end mark follows. Throws a Failure if it cannot be written.
void InsertIntoHeader(OutputFile& output, const std::string& saved, const std::string& lines);

} // namespace oxd
