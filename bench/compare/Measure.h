// Times the contenders of one work in turns, so that whatever else the machine does meets them all alike.
#pragma once

#include "compare/Work.h"

#include <optional>
#include <string>
#include <vector>

namespace bench {

struct Figure
{
    std::string name;
    double median;
    double lowest;
    double highest;
};

struct Verdict
{
    Goal goal;
    double value;
    bool Met() const { return value <= goal.atMost; }
};

struct Result
{
    std::string work;
    std::string unit;
    std::vector<Figure> figures; // ours first
    std::vector<Verdict> verdicts;

    double Ours() const { return figures.front().median; }
    std::optional<double> Floor() const;
    const Figure* BestPeer() const; // null without one
};

// Throws std::runtime_error when checksums differ. `before` is the result of the work before this one, if any.
Result Measure(const Work& work, const Settings& settings, int rounds, const Result* before);

} // namespace bench
