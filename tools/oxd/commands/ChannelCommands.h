// The commands that take one channel.
#pragma once

#include "oxd/system/Failure.h"

#include <CLI/CLI.hpp>

namespace oxd {

void AddCorrect(CLI::App& app, ExitCode& outcome);
void AddExport(CLI::App& app, ExitCode& outcome);

} // namespace oxd
