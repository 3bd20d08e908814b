// Declares the command line of the tool: its commands, their options and their help.
#pragma once

#include "oxd/system/Failure.h"

#include <CLI/CLI.hpp>

namespace oxd {

class Results;

// Adds all commands and options to `app`. Parsing a command line then runs the command that it names, which writes to
// `results` and sets `outcome`; it throws if the command fails. Both must outlive `app`.
void AddCommands(CLI::App& app, Results& results, ExitCode& outcome);

} // namespace oxd
