// The command that explains what is found in files.
#pragma once

#include <CLI/CLI.hpp>

namespace oxd {

class Results;

// Adds its command as AddCommands describes.
void AddExplain(CLI::App& app, Results& results);

} // namespace oxd
