// The command that compares two files.
#pragma once

#include "oxd/system/Failure.h"

#include <CLI/CLI.hpp>

namespace oxd {

class Results;

// Adds its command as AddCommands describes.
void AddDiff(CLI::App& app, Results& results, ExitCode& outcome);

} // namespace oxd
