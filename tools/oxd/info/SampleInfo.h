// What `oxd info` tells of samples.
#pragma once

#include "oxd/info/FileInfo.h"

namespace oxd {

// Opens the file and adds what its samples tell to what its header told. Throws a Failure if it cannot be opened; a
// line that cannot be read is a problem.
void ReadAllSamples(FileInfo& info);

} // namespace oxd
