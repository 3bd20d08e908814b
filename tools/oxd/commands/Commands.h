// Declares the command line of the tool: its commands, their options and their help.
#pragma once

#include "oxd/system/Failure.h"

#include <CLI/CLI.hpp>

namespace oxd {

class Results;

// Part of the help of each command that reads an .oxd file and saves another one.
inline constexpr const char* notInSavedFiles =
    "Saving drops views, processors and sections that the library does not know: OUT\n"
    "does not have them. Channels that FILE stores in 8 bits take 16 in OUT.";

// Adds all commands and options to `app`. Parsing a command line then runs the command that it names, which writes to
// `results` and sets `outcome`; it throws if the command fails. Both must outlive `app`.
void AddCommands(CLI::App& app, Results& results, ExitCode& outcome);

} // namespace oxd
