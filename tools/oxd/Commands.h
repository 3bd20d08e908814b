// The commands of the tool, as its command line declares them.
#pragma once

#include "Failure.h"

#include <CLI/CLI.hpp>

#include <string>

namespace oxd {

class Results;

// Adds all commands and options. Parsing then runs the command that was given and sets `outcome`.
void AddCommands(CLI::App& app, Results& results, ExitCode& outcome);

// Writes a message to the standard error.
void Complain(const std::string& message);

} // namespace oxd
