// The options that say where a command writes; every command that writes a file has them from here.
#pragma once

#include "oxd/system/OutputFile.h"

#include <CLI/CLI.hpp>

namespace oxd {

// Adds --no-clobber.
CLI::Option& AddNoClobber(CLI::App& command, Destination& destination);

// Adds -o. Whether it is required is up to the caller.
CLI::Option& AddOutput(CLI::App& command, Destination& destination);

} // namespace oxd
