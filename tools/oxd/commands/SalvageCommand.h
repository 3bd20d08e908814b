// The command that saves what is certain in a damaged file.
#pragma once

#include <CLI/CLI.hpp>

namespace oxd {

class Results;

// Adds its command as AddCommands describes.
void AddSalvage(CLI::App& app, Results& results);

} // namespace oxd
