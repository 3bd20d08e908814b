// The commands that work on one channel, and the one that shows all of a file.
#pragma once

#include "oxd/system/Failure.h"

#include <CLI/CLI.hpp>

namespace oxd {

class Results;

// Each adds its command as AddCommands describes.
void AddCorrect(CLI::App& app, Results& results, ExitCode& outcome);
void AddExport(CLI::App& app, ExitCode& outcome);
void AddView(CLI::App& app, Results& results);

} // namespace oxd
