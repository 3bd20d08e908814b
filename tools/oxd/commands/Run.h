// The tool apart from its process: from the arguments to the exit code. The whole tool runs in the one thread that
// calls this: none of its classes is thread-safe, and the library, which takes calls from one thread at a time, needs
// no lock.
#pragma once

#include <string>
#include <vector>

namespace oxd {

class Results;

// Runs the command that `arguments`, in UTF-8 and without the name of the tool, ask for. Writes its results to
// `results` and what went wrong to the standard error. Throws std::bad_alloc if memory runs out, and nothing else.
int Run(std::vector<std::string> arguments, Results& results);

// All that the main function does: sets the process up and runs the command that its arguments ask for. Throws nothing.
int RunProcess(int argc, char** argv);

} // namespace oxd
