// The command that runs processors.
#pragma once

#include "oxd/system/Failure.h"

#include <CLI/CLI.hpp>

namespace oxd {

class Results;

// `outcome` becomes the exit code of a command that does not fail. What is passed must outlive the app.
void AddProcess(CLI::App& app, Results& results, ExitCode& outcome);

} // namespace oxd
