// The command that explains the others.
#pragma once

#include <CLI/CLI.hpp>

namespace oxd {

class Results;

// Adds its command as AddCommands describes.
void AddHelp(CLI::App& app, Results& results);

} // namespace oxd
