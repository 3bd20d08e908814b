// Reports results as a table for people, as JSON for programs, and as a chart.
#pragma once

#include "compare/Measure.h"

#include <string>
#include <vector>

namespace bench {

// The table on the standard output; each row is printed as soon as its result is known.
void PrintHead();
void PrintRow(const Result& result);

// Writes all results and a description of the machine. Throws std::runtime_error if the file cannot be written.
void WriteJson(const std::string& path, const std::vector<Result>& results, int rounds);

// Draws an SVG file of the ratios to the baseline on a logarithmic scale: the library as bars, peers as dots, and goals
// as strokes.
void DrawChart(const std::string& path, const std::vector<Result>& results);

} // namespace bench
