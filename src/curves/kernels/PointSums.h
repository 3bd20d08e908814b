// Sums over the points of a curve, eight at a time. See CurveLoops.h for how these sources are compiled; what it says
// of state and threads holds here, too.
#pragma once

#include "curves/kernels/CurveKernels.h"
#include "curves/kernels/Medians.h"

namespace veltaris::curves {

// NOLINTBEGIN(misc-definitions-in-headers,cert-dcl59-cpp): every source that includes this is to have its own
namespace {

[[gnu::always_inline]] inline double Lowest(const CEight& numbers)
{
    double a[eight];
    StoreEight(numbers, a);
    return Lower(Lower(Lower(a[0], a[1]), Lower(a[2], a[3])), Lower(Lower(a[4], a[5]), Lower(a[6], a[7])));
}

[[gnu::always_inline]] inline double Highest(const CEight& numbers)
{
    double a[eight];
    StoreEight(numbers, a);
    return Higher(Higher(Higher(a[0], a[1]), Higher(a[2], a[3])), Higher(Higher(a[4], a[5]), Higher(a[6], a[7])));
}

struct CPointSums
{
    CEight points{}, u{}, uu{}, r{}, ur{}, rr{};
    CEight lowest = All(infinity), highest = All(-infinity);

    // Leaves out the sums that are known without counting if all points take part: `points`, `u` and `uu`.
    [[gnu::always_inline]] void AddAll(const CEight& signal, const CEight& at, const CEight& distance)
    {
        r = r + distance;
        ur = ur + at * distance;
        rr = rr + distance * distance;
        lowest = Lower(signal, lowest);
        highest = Higher(signal, highest);
    }

    [[gnu::always_inline]] void AddSome(const CMask& some, const CEight& signal, const CEight& at,
                                        const CEight& distance)
    {
        const CEight index = Choose(some, at, All(0));
        const CEight kept = Choose(some, distance, All(0));
        points = points + Choose(some, All(1), All(0));
        u = u + index;
        uu = uu + index * index;
        r = r + kept;
        ur = ur + index * kept;
        rr = rr + kept * kept;
        lowest = Lower(Choose(some, signal, All(infinity)), lowest);
        highest = Higher(Choose(some, signal, All(-infinity)), highest);
    }
};

// The last eight points of a stretch; of fewer all, and NaN behind them.
[[gnu::always_inline]] inline CEight LastEight(const CStretch& stretch)
{
    return stretch.count >= eight ? LoadEight(stretch.signal + stretch.count - eight)
                                  : LoadPart(stretch.signal, stretch.count);
}

[[gnu::always_inline]] inline CEight IndicesOfLastEight(const CStretch& stretch)
{
    return stretch.count >= eight ? Ascending() + All(static_cast<double>(stretch.count - eight)) : Ascending();
}

// Calls step(eight signals, their indices) for all points, but last(last eight, their indices, which of them step() had
// not) if their number is not a multiple of eight.
template <class Step, class Last>
[[gnu::always_inline]] inline void ForEachEight(const CStretch& stretch, Step step, Last last)
{
    CEight indices = Ascending();
    std::size_t i = 0;
    for (; i + eight <= stretch.count; i += eight) {
        step(LoadEight(stretch.signal + i), indices);
        indices = indices + All(eight);
    }
    if (i < stretch.count) {
        const CEight left = IndicesOfLastEight(stretch);
        const CMask isNew = (All(static_cast<double>(i)) <= left) & (left < All(static_cast<double>(stretch.count)));
        last(LastEight(stretch), left, isNew);
    }
}

[[gnu::always_inline]] inline CEight DistanceFrom(const CTrend& trend, const CEight& signal, const CEight& u)
{
    return signal - (All(trend.level) + All(trend.tilt) * u);
}

[[gnu::always_inline]] inline CMask IsAcquired(const CEight& signal)
{
    return (All(-largestSignal) <= signal) & (signal <= All(largestSignal));
}

[[gnu::always_inline]] inline bool IsAcquired(double signal)
{
    return -largestSignal <= signal && signal <= largestSignal;
}

// Whether a sum of squares shows that all points were acquired.
[[gnu::always_inline]] inline bool IsSumOfNumbers(double squares)
{
    return squares <= largestSignal * largestSignal;
}

} // namespace
// NOLINTEND(misc-definitions-in-headers,cert-dcl59-cpp)

} // namespace veltaris::curves
