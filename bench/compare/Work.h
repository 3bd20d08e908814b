// What is measured, and against what.
#pragma once

#include "support/Image.h"
#include "support/Scratch.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace bench {

// One way to do a work. Only `run` is timed.
struct Contender
{
    std::string name;
    std::function<void()> run;
    std::function<double()> finish;           // lets go of what a run left behind; a checksum of it
    std::function<void()> prepare = [] {};    // before each run
    std::function<double()> figure = nullptr; // measured instead of the time that the run takes
};

enum class Against
{
    Floor,    // ratio to the hand-written code
    BestPeer, // ratio to the fastest of the other libraries
    Figure,   // as it is
    Growth,   // ratio to the figure of the work before this one
};

struct Goal
{
    Against against;
    double atMost;
};

inline constexpr double milliseconds = 1e3; // a second

inline const std::string ours = "VELOxd";
inline const std::string theFloor = "floor";

enum class Clock
{
    Wall,
    Processor, // time that this process had one: for a machine that is busy with other things
};

// What contenders are made from, and how they are timed.
struct Settings
{
    Clock clock;
    CScratch* scratch;
    std::uint64_t divisor; // of all sizes, to run quickly
};

inline Shape Smaller(Shape shape, const Settings& settings)
{
    shape.lines = std::max<std::uint64_t>(shape.lines / settings.divisor, 16);
    return shape;
}

struct Work
{
    std::string name;
    std::string unit;
    double unitsPerSecond; // what a time in seconds is multiplied with
    std::vector<Goal> goals;
    // Of which the first is ours. Data are made here, and dropped with the contenders.
    std::function<std::vector<Contender>(const Settings&)> contenders;
    double tolerance = 0; // between checksums, relative
};

// All works, in the order in which they are shown.
std::vector<Work> FileWorks();
std::vector<Work> HeaderWorks();
std::vector<Work> LineFileWorks();
std::vector<Work> LineWorks();

} // namespace bench
