// The commands that make shells complete command lines of the tool.
#pragma once

#include <CLI/CLI.hpp>

namespace oxd {

class Results;

// Adds its commands as AddCommands describes, one that prints what a shell reads and one that this calls.
void AddCompletion(CLI::App& app, Results& results);

} // namespace oxd
