// The tool without its process: from arguments to exit code.
#pragma once

#include <string>
#include <vector>

namespace oxd {

class Results;

// Writes the results of the command to `results` and what went wrong to the standard error. Throws nothing.
int Run(std::vector<std::string> arguments, Results& results);

} // namespace oxd
