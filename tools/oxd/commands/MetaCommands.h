// The commands for single values of the measurement information.
#pragma once

#include <CLI/CLI.hpp>

namespace oxd {

class Results;

void AddGet(CLI::App& app, Results& results);
void AddSet(CLI::App& app);

} // namespace oxd
