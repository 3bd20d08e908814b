// The tool apart from its process: from the arguments to the exit code. The whole tool runs in the one thread that
// calls this: none of its classes is thread-safe, and the library, which takes calls from one thread at a time, needs
// no lock.
#pragma once

#include <string>
#include <vector>

namespace oxd {

class Results;

// Runs the command that `arguments`, in UTF-8 and without the name of the tool, ask for. Writes its results to
// `results` and what went wrong to the standard error. Throws nothing.
int Run(std::vector<std::string> arguments, Results& results);

} // namespace oxd
