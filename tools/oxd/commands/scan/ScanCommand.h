// The command that tells what all files in folders hold.
#pragma once

#include "oxd/system/Failure.h"

#include <CLI/CLI.hpp>

namespace oxd {

class Results;

// Adds its command as AddCommands describes.
void AddScan(CLI::App& app, Results& results, ExitCode& outcome);

} // namespace oxd
