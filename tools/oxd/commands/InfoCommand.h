// The command that shows what files hold.
#pragma once

#include "oxd/system/Failure.h"

#include <CLI/CLI.hpp>

namespace oxd {

class Results;

// Adds its command as AddCommands describes.
void AddInfo(CLI::App& app, Results& results, ExitCode& outcome);

} // namespace oxd
