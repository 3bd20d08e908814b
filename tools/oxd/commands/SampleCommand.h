// The command that makes a sample file.
#pragma once

#include <CLI/CLI.hpp>

namespace oxd {

// Adds its command as AddCommands describes.
void AddMakeSample(CLI::App& app);

} // namespace oxd
