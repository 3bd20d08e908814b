// The commands of the tool, as its command line declares them.
#pragma once

#include "oxd/system/Failure.h"

#include <CLI/CLI.hpp>

#include <string>

namespace oxd {

class Results;

// What is to be known of commands that save .oxd files.
inline constexpr const char* notInSavedFiles = "OUT has no views and no processors, and what was in 8 bits is in 16.";

// Adds all commands and options. Parsing then runs the command that was given and sets `outcome`.
void AddCommands(CLI::App& app, Results& results, ExitCode& outcome);

// Writes a message to the standard error.
void Complain(const std::string& message);

} // namespace oxd
