// Results as a table for people, as JSON for programs, and as a chart.
#pragma once

#include "compare/Measure.h"

#include <string>
#include <vector>

namespace bench {

// One row, as soon as it is known.
void PrintHead();
void PrintRow(const Result& result);

void WriteJson(const std::string& path, const std::vector<Result>& results, int rounds);

// Ratios to the floor, on a logarithmic scale: ours as bars, others as dots, goals as strokes.
void DrawChart(const std::string& path, const std::vector<Result>& results);

} // namespace bench
