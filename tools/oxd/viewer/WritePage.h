// Makes a page of a whole file: the viewer with the file's bytes inside, which any browser opens without the tool.
#pragma once

#include "oxd/files/OutputFile.h"

#include <string>

namespace oxd {

// Throws a Failure if this build has no viewer, and if the file is larger than a page can hold or cannot be read. What
// was there stays then. Memory stays small.
void WritePage(const std::string& file, const Destination& destination);

} // namespace oxd
