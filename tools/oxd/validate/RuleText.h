// What `oxd explain` tells of the rules by which files are inspected.
#pragma once

#include "inspect/Rules.h"

#include <span>
#include <string>

namespace oxd {

// Severity, cause, example and remedy of one rule, in lines that fit a terminal.
std::string ToText(const veltaris::inspect::Rule& rule);

// A line for each rule, with its id, severity and title.
std::string ToText(std::span<const veltaris::inspect::Rule> rules);

// A JSON object for one rule, and an array of such objects for several.
std::string ToJson(const veltaris::inspect::Rule& rule);
std::string ToJson(std::span<const veltaris::inspect::Rule> rules);

} // namespace oxd
