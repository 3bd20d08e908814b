// The commands for single values of the measurement information.
#pragma once

#include "oxd/system/Failure.h"

#include <CLI/CLI.hpp>

namespace oxd {

class Results;

// Each adds its command as AddCommands describes.
void AddGet(CLI::App& app, Results& results, ExitCode& outcome);
void AddSet(CLI::App& app, Results& results);

} // namespace oxd
