// The bodies of the loops over curves, which are compiled once for each width of vectors: each width has one source,
// whose compiler options say which instructions it may use, and which defines its set of loops from what is here.
//
// Invariant: everything in here, and in what this includes, has internal linkage and calls nothing that other sources
// could share, not even an inline function of the standard library. The linker keeps one copy of a shared function, and
// the processor may lack the instructions of the copy that it keeps.
//
// The loops hold no state and can run in any number of threads at once.
#pragma once

#include "curves/kernels/BlockLoops.h"

namespace veltaris::curves {

// NOLINTBEGIN(misc-definitions-in-headers,cert-dcl59-cpp): every source that includes this is to have its own
namespace {

[[gnu::always_inline]] inline CSums Total(const CPointSums& sums)
{
    return {Sum(sums.points), Sum(sums.u),  Sum(sums.uu),        Sum(sums.r),
            Sum(sums.ur),     Sum(sums.rr), Lowest(sums.lowest), Highest(sums.highest)};
}

CSums SumsOfSome(const CStretch& stretch, const CTrend& trend)
{
    CPointSums sums;
    const auto add = [=, &sums](const CEight& signal, const CEight& indices, std::size_t) {
        const CEight u = indices - All(trend.origin);
        sums.AddSome(IsAcquired(signal), signal, u, DistanceFrom(trend, signal, u));
    };
    ForEachEight(stretch, add, add);
    return Total(sums);
}

// What fills up the last eight is left out by its index, so that a NaN of the stretch itself gets into the sums.
CSums SumsOfAll(const CStretch& stretch, const CTrend& trend)
{
    CPointSums sums;
    const auto count = static_cast<double>(stretch.count);
    const auto add = [=, &sums](const CEight& signal, const CEight& indices, std::size_t) {
        const CEight u = indices - All(trend.origin);
        sums.AddAll(signal, u, DistanceFrom(trend, signal, u));
    };
    const auto addLast = [=, &sums](const CEight& signal, const CEight& indices, std::size_t) {
        const CEight u = indices - All(trend.origin);
        sums.AddSome(indices < All(count), signal, u, DistanceFrom(trend, signal, u));
    };
    ForEachEight(stretch, add, addLast);
    CSums total = Total(sums);
    const double mean = 0.5 * (count - 1) - trend.origin;
    total.points = count;
    total.u = count * mean;
    total.uu = count * ((count * count - 1) / 12 + mean * mean);
    return total;
}

// Tries without looking at single points first.
CSums Sums(const CStretch& stretch, const CTrend& trend)
{
    const CSums sums = SumsOfAll(stretch, trend);
    return IsSumOfNumbers(sums.rr) ? sums : SumsOfSome(stretch, trend);
}

// The lowest of numbers, and the highest with its first index. No comparison prefers a NaN to a number.
struct CRunningExtremes
{
    CEight lowest = All(infinity), highest = All(-infinity), index{};

    [[gnu::always_inline]] void Add(const CEight& values, const CEight& indices)
    {
        const CMask isHigher = highest < values;
        highest = Choose(isHigher, values, highest);
        index = Choose(isHigher, indices, index);
        lowest = Lower(values, lowest);
    }

    [[gnu::always_inline]] CExtremes Total(std::size_t count) const
    {
        const double top = Highest(highest);
        const double first = Lowest(Choose(All(top) <= highest, index, All(infinity)));
        return {Lowest(lowest), top, top == -infinity ? count : static_cast<std::size_t>(first)};
    }
};

CRange Range(const CStretch& stretch)
{
    CEight lowest = All(infinity), highest = All(-infinity);
    const auto add = [&](const CEight& signal, const CEight&, std::size_t) {
        const CMask isAcquired = IsAcquired(signal);
        lowest = Lower(Choose(isAcquired, signal, All(infinity)), lowest);
        highest = Higher(Choose(isAcquired, signal, All(-infinity)), highest);
    };
    ForEachEight(stretch, add, add);
    return {Lowest(lowest), Highest(highest)};
}

template <bool IsWritten>
CExtremes DeriveTo(double* derived, const CStretch& stretch, const CDerivation& d)
{
    CRunningExtremes extremes;
    const auto derive = [=, &extremes](const CEight& signal, const CEight& indices) {
        const CEight u = indices - All(d.origin);
        const CEight any = All(d.gain) * signal + (All(d.offset) + All(d.rise) * u);
        const CEight values = Choose(IsAcquired(signal), any, All(nan));
        extremes.Add(values, indices);
        return values;
    };
    ForEachEight(
        stretch,
        [=](const CEight& signal, const CEight& indices, std::size_t i) {
            const CEight values = derive(signal, indices);
            if constexpr (IsWritten)
                StoreEight(values, derived + i);
        },
        [=](const CEight& signal, const CEight& indices, std::size_t i) {
            const CEight values = derive(signal, indices);
            if constexpr (IsWritten)
                StorePart(values, derived + i, stretch.count - i);
        });
    return extremes.Total(stretch.count);
}

CExtremes Derive(const CStretch& stretch, const CDerivation& derivation, double* derived)
{
    return derived != nullptr ? DeriveTo<true>(derived, stretch, derivation)
                              : DeriveTo<false>(nullptr, stretch, derivation);
}

void Erase(double* numbers, std::size_t count)
{
    std::size_t i = 0;
    for (; i + eight <= count; i += eight)
        StoreEight(All(nan), numbers + i);
    StorePart(All(nan), numbers + i, count - i);
}

// Finds a point in one of two directions. Eights without it are passed at once; its own is looked at point by point, in
// the same arithmetic.
class CSearch
{
public:
    CSearch(const CStretch& stretch, const CTrend& trend, double gain, double level)
        : m_stretch(stretch), m_trend(trend), m_gain(gain), m_level(level)
    {
    }

    std::size_t First() const
    {
        std::size_t i = PassEights(0, 1);
        while (i < m_stretch.count && !Is(i))
            ++i;
        return i;
    }

    std::size_t Last() const
    {
        std::size_t end = m_stretch.count;
        if (end >= eight)
            end -= PassEights(end - eight, -1);
        while (end > 0 && !Is(end - 1))
            --end;
        return end > 0 ? end - 1 : m_stretch.count;
    }

private:
    bool Is(std::size_t i) const
    {
        const double u = static_cast<double>(i) - m_trend.origin;
        const double distance = m_stretch.signal[i] - (m_trend.level + m_trend.tilt * u);
        return m_gain * distance <= m_level && IsAcquired(m_stretch.signal[i]);
    }

    // How many points lie in the complete eights from that at `i` on, forwards or backwards, that the point is not in.
    std::size_t PassEights(std::size_t i, int direction) const
    {
        const CEight origin = All(m_trend.origin), level = All(m_trend.level), tilt = All(m_trend.tilt);
        const CEight gain = All(m_gain), most = All(m_level), step = All(direction * eight);
        const std::ptrdiff_t stride = direction * std::ptrdiff_t{eight};
        const double* signal = m_stretch.signal + i;
        CEight indices = Ascending() + All(static_cast<double>(i));
        const std::size_t whole = m_stretch.count - m_stretch.count % eight;
        for (std::size_t passed = 0; passed < whole; passed += eight) {
            const CEight distance = LoadEight(signal) - (level + tilt * (indices - origin));
            if (Any(gain * distance <= most))
                return passed;
            signal += stride;
            indices = indices + step;
        }
        return whole;
    }

    CStretch m_stretch;
    CTrend m_trend;
    double m_gain;
    double m_level;
};

std::size_t FirstAtMost(const CStretch& stretch, const CTrend& trend, double gain, double level)
{
    return CSearch(stretch, trend, gain, level).First();
}

std::size_t LastAtMost(const CStretch& stretch, const CTrend& trend, double gain, double level)
{
    return CSearch(stretch, trend, gain, level).Last();
}

constexpr CCurveKernels kernelsOfThisSource{Sums, Blocks, Range, Derive, Erase, FirstAtMost, LastAtMost};

} // namespace
// NOLINTEND(misc-definitions-in-headers,cert-dcl59-cpp)

} // namespace veltaris::curves
