// The command that repeats how a file was made.
#pragma once

#include "oxd/system/Failure.h"

#include <CLI/CLI.hpp>

namespace oxd {

class Results;

// Adds its command as AddCommands describes.
void AddReplay(CLI::App& app, Results& results, ExitCode& outcome);

} // namespace oxd
