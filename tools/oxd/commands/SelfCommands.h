// The commands about the tool itself: its installation, and what its commands do.
#pragma once

#include "oxd/system/Failure.h"

#include <CLI/CLI.hpp>

namespace oxd {

class Results;

// Each adds its command as AddCommands describes.
void AddDoctor(CLI::App& app, Results& results, ExitCode& outcome);
void AddHelp(CLI::App& app, Results& results);

} // namespace oxd
