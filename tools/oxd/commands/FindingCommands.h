// The commands that find what is wrong with files, and explain it.
#pragma once

#include "oxd/system/Failure.h"

#include <CLI/CLI.hpp>

namespace oxd {

class Results;

// Each adds its command as AddCommands describes.
void AddValidate(CLI::App& app, Results& results, ExitCode& outcome);
void AddExplain(CLI::App& app, Results& results);

} // namespace oxd
