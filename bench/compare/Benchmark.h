// A benchmark: an operation, the contenders that perform it, and the goals that the library has to reach. The
// benchmarks themselves are defined in *Benchmarks.cpp; Measure.h runs them, one after the other in a single thread.
#pragma once

#include "support/Image.h"
#include "support/Scratch.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace bench {

// One way to perform the operation of a benchmark. Only `run` is timed.
struct Contender
{
    std::string name;
    std::function<void()> run;
    std::function<double()> finish;           // releases what a run has produced and returns its checksum
    std::function<void()> prepare = [] {};    // called before each run
    std::function<double()> figure = nullptr; // if set, measured in place of the time
};

// What a goal compares the library's figure with.
enum class Against
{
    Baseline, // ratio to the hand-written baseline
    BestPeer, // ratio to the fastest of the other libraries
    Figure,   // the figure itself
    Growth,   // ratio to the library's figure in the benchmark before this one
};

struct Goal
{
    Against against;
    double atMost;
};

inline constexpr double milliseconds = 1e3; // in a second

inline const std::string ours = "VELOxd";
inline const std::string baselineName = "baseline";

enum class Clock
{
    Wall,
    Processor, // of this process alone, for a machine that is busy with other things
};

// How the contenders are set up and timed.
struct Settings
{
    Clock clock;
    CScratch* scratch;
    std::uint64_t divisor; // of all sizes; more than 1 for a quick run
};

// The shape with fewer lines in a quick run.
inline Shape Smaller(Shape shape, const Settings& settings)
{
    shape.lines = std::max<std::uint64_t>(shape.lines / settings.divisor, 16);
    return shape;
}

struct Benchmark
{
    std::string name;
    std::string unit;
    double unitsPerSecond; // converts a time in seconds to the unit
    std::vector<Goal> goals;
    // Creates the contenders, of which the first is the library. They own the test data.
    std::function<std::vector<Contender>(const Settings&)> contenders;
    double tolerance = 0; // allowed between the checksums of contenders, relative
};

// All benchmarks, in the order of the report.
std::vector<Benchmark> FileBenchmarks();
std::vector<Benchmark> HeaderBenchmarks();
std::vector<Benchmark> InspectBenchmarks();
std::vector<Benchmark> LineFileBenchmarks();
std::vector<Benchmark> CallBenchmarks();
std::vector<Benchmark> CurveBenchmarks();

} // namespace bench
