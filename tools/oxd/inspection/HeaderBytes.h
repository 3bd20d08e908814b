// The text of a header for what has to see its lines as they stand.
#pragma once

#include "oxd/inspection/InspectFile.h"

#include <string>

namespace oxd {

// The bytes of the header with its end mark, read once more. Throws a Failure if they cannot be read.
std::string HeaderBytes(const inspect::Inspection& inspection);

} // namespace oxd
