// Runs and times benchmarks. The contenders of one benchmark take turns, so that whatever else the machine does affects
// all of them alike.
#pragma once

#include "compare/Benchmark.h"

#include <optional>
#include <string>
#include <vector>

namespace bench {

// What was measured for one contender, in the unit of the benchmark.
struct Figure
{
    std::string name;
    double median;
    double lowest;
    double highest;
};

// Whether a goal was reached.
struct Verdict
{
    Goal goal;
    double value;
    bool Met() const { return value <= goal.atMost; }
};

// The outcome of one benchmark.
struct Result
{
    std::string benchmark;
    std::string unit;
    std::vector<Figure> figures; // the library's comes first
    std::vector<Verdict> verdicts;

    double Ours() const { return figures.front().median; }
    std::optional<double> Baseline() const; // the median, if the benchmark has a baseline
    const Figure* BestPeer() const;         // null if there is no peer
};

// Throws std::runtime_error if the checksums of the contenders differ. `before` is the result of the previous
// benchmark, or null.
Result Measure(const Benchmark& benchmark, const Settings& settings, int rounds, const Result* before);

} // namespace bench
