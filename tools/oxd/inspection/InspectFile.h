// Inspects files for commands: failures to read one are those that every command has.
#pragma once

#include "inspect/Inspection.h"

#include <string>

namespace oxd {

namespace inspect = veltaris::inspect;

// Reads the header only, and explains its warnings and notes to whoever wants details. Throws a Failure if the file
// cannot be opened or read, never for what it holds.
inspect::Inspection InspectFile(const std::string& file);

// The same without explanations: of a file that they were given for, or that was made from one.
inspect::Inspection InspectQuietly(const std::string& file);

// Throws a Failure, with RefusalMessage, if the file is none that the library opens or has no header.
void RequireOpens(const inspect::Inspection& inspection);

} // namespace oxd
