// A curve: a signal over a regular position axis. The functions of this folder look at one curve at a time, take no
// memory, keep no state and throw nothing, so that any number of threads can call them at once. They give the same
// bytes on every system and with every width of instructions.
#pragma once

#include <cstddef>
#include <span>

namespace veltaris::curves {

// Point i stands at start + i step. The axis counts the extension of the piezo, in metres if there are metres; `step`
// may be negative. An axis is usable if both numbers are finite, the step is not 0 and the last position is finite,
// too.
struct CAxis
{
    double start = 0;
    double step = 1;

    constexpr double PositionOf(double index) const { return start + index * step; }
};

// A view of the signal, which must outlive it. A point that was never acquired holds a NaN; an infinity counts as one,
// too, as may a number beyond 1e150. Approach and retract are two curves, each along its own axis.
struct CCurve
{
    std::span<const double> signal;
    CAxis axis;

    double PositionOf(double index) const { return axis.PositionOf(index); }
};

// The part of a curve between two positions, both included, in the unit of the axis; either may be the larger one. The
// whole curve if both are 0. A range that reaches beyond a curve stands for what is inside.
struct CPositionRange
{
    double from = 0;
    double to = 0;

    constexpr bool IsWhole() const { return from == 0 && to == 0; }
};

} // namespace veltaris::curves
