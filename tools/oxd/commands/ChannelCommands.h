// The commands that work on one channel.
#pragma once

#include "oxd/system/Failure.h"

#include <CLI/CLI.hpp>

namespace oxd {

// Each adds its command as AddCommands describes.
void AddCorrect(CLI::App& app, ExitCode& outcome);
void AddExport(CLI::App& app, ExitCode& outcome);

} // namespace oxd
