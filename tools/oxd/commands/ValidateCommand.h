// The command that finds what is wrong with files.
#pragma once

#include "oxd/system/Failure.h"

#include <CLI/CLI.hpp>

namespace oxd {

class Results;

// Adds its command as AddCommands describes.
void AddValidate(CLI::App& app, Results& results, ExitCode& outcome);

} // namespace oxd
