// The command that examines an installation.
#pragma once

#include "oxd/system/Failure.h"

#include <CLI/CLI.hpp>

namespace oxd {

class Results;

// Adds its command as AddCommands describes.
void AddDoctor(CLI::App& app, Results& results, ExitCode& outcome);

} // namespace oxd
