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
    const auto add = [=, &sums](const CEight& signal, const CEight& indices, const CMask& isNew) {
        const CEight u = indices - All(trend.origin);
        sums.AddSome(IsAcquired(signal) & isNew, signal, u, DistanceFrom(trend, signal, u));
    };
    const CMask all = All(0) <= All(0);
    ForEachEight(
        stretch, [=](const CEight& signal, const CEight& indices) { add(signal, indices, all); }, add);
    return Total(sums);
}

// Leaves points out by their index alone, so that a NaN of the stretch gets into the sums.
CSums SumsOfAll(const CStretch& stretch, const CTrend& trend)
{
    CPointSums sums;
    const auto count = static_cast<double>(stretch.count);
    const auto add = [=, &sums](const CEight& signal, const CEight& indices) {
        const CEight u = indices - All(trend.origin);
        sums.AddAll(signal, u, DistanceFrom(trend, signal, u));
    };
    const auto addLast = [=, &sums](const CEight& signal, const CEight& indices, const CMask& isNew) {
        const CEight u = indices - All(trend.origin);
        sums.AddSome(isNew, signal, u, DistanceFrom(trend, signal, u));
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

// The highest of numbers with its first index. No comparison prefers a NaN to a number.
struct CRunningHighest
{
    CEight highest = All(-infinity), index{};

    [[gnu::always_inline]] void Add(const CEight& values, const CEight& indices)
    {
        const CMask isHigher = highest < values;
        highest = Choose(isHigher, values, highest);
        index = Choose(isHigher, indices, index);
    }

    [[gnu::always_inline]] CHighest Total(std::size_t count) const
    {
        const double top = Highest(highest);
        const double first = Lowest(Choose(All(top) <= highest, index, All(infinity)));
        return {top, top == -infinity ? count : static_cast<std::size_t>(first)};
    }
};

// The higher of each of eight pairs, and of equals that with the lower index.
[[gnu::always_inline]] inline CRunningHighest Joined(const CRunningHighest& a, const CRunningHighest& b)
{
    const CMask areEqual = (a.highest <= b.highest) & (b.highest <= a.highest);
    const CMask isB = (a.highest < b.highest) | (areEqual & (b.index < a.index));
    return {Choose(isB, b.highest, a.highest), Choose(isB, b.index, a.index)};
}

[[gnu::always_inline]] inline CRunningHighest Joined(const CRunningHighest (&all)[4])
{
    return Joined(Joined(all[0], all[1]), Joined(all[2], all[3]));
}

CRange Range(const CStretch& stretch)
{
    CEight lowest = All(infinity), highest = All(-infinity);
    const auto add = [&](const CEight& signal, const CEight&) {
        const CMask isAcquired = IsAcquired(signal);
        lowest = Lower(Choose(isAcquired, signal, All(infinity)), lowest);
        highest = Higher(Choose(isAcquired, signal, All(-infinity)), highest);
    };
    ForEachEight(stretch, add,
                 [&](const CEight& signal, const CEight& indices, const CMask&) { add(signal, indices); });
    return {Lowest(lowest), Highest(highest)};
}

// The derived values of eight points.
class CDerive
{
public:
    explicit CDerive(const CDerivation& d)
        : m_gain(All(d.gain)), m_offset(All(d.offset - d.rise * d.origin)), m_rise(All(d.rise))
    {
    }

    [[gnu::always_inline]] CEight operator()(const CEight& signal, const CEight& indices) const
    {
        return m_gain * signal + (m_offset + m_rise * indices);
    }

private:
    CEight m_gain, m_offset, m_rise;
};

enum class Acquired
{
    All,  // is taken for granted, which lets a number through that is too large
    Some, // of the points: the others give NaN
};

// Four eights at a time, since each comparison waits for the one before. Writes the values unless `derived` is null.
template <Acquired acquired, bool IsWritten>
CHighest DeriveTo(double* derived, const CStretch& stretch, const CDerivation& derivation)
{
    constexpr std::size_t chains = 4;
    const CDerive derive(derivation);
    CRunningHighest highest[chains];
    const auto valuesOf = [=](CRunningHighest& running, const CEight& signal, const CEight& indices) {
        const CEight any = derive(signal, indices);
        const CEight values = acquired == Acquired::All ? any : Choose(IsAcquired(signal), any, All(nan));
        running.Add(values, indices);
        return values;
    };
    const CEight last = LastEight(stretch); // before it is written
    CEight indices = Ascending();
    const auto deriveEight = [&](std::size_t chain, std::size_t i) {
        const CEight values = valuesOf(highest[chain], LoadEight(stretch.signal + i), indices);
        if constexpr (IsWritten)
            StoreEight(values, derived + i);
        indices = indices + All(eight);
    };
    std::size_t i = 0;
    for (; i + chains * eight <= stretch.count; i += chains * eight) {
#pragma GCC unroll 4
        for (std::size_t chain = 0; chain < chains; ++chain)
            deriveEight(chain, i + chain * eight);
    }
    for (; i + eight <= stretch.count; i += eight)
        deriveEight(0, i);
    if (i < stretch.count) {
        const CEight values = valuesOf(highest[0], last, IndicesOfLastEight(stretch));
        if constexpr (IsWritten)
            StoreLast(values, derived, stretch.count);
    }
    return Joined(highest).Total(stretch.count);
}

CHighest Derive(const CStretch& stretch, const CDerivation& derivation, double* derived)
{
    return DeriveTo<Acquired::Some, true>(derived, stretch, derivation);
}

double Size(double number)
{
    return Higher(number, -number);
}

// Tries without looking at single points first: no comparison takes a NaN, and a signal that is too large is seen if it
// is the highest.
CHighest HighestDerived(const CStretch& stretch, const CDerivation& d)
{
    const CHighest highest = DeriveTo<Acquired::All, false>(nullptr, stretch, d);
    const double most = 0.25 * largestSignal * Size(d.gain);
    const double farthest = static_cast<double>(stretch.count) + Size(d.origin);
    const bool isPlausible = highest.value <= most && Size(d.offset) + Size(d.rise) * farthest <= most;
    return isPlausible ? highest : DeriveTo<Acquired::Some, false>(nullptr, stretch, d);
}

// Stores at addresses that are multiples of their size, but for the first and the last eight.
void Erase(double* numbers, std::size_t count)
{
    std::size_t i = 0;
    if (count >= eight) {
        StoreEight(All(nan), numbers);
        i = eight - (reinterpret_cast<std::uintptr_t>(numbers) / sizeof(double)) % eight;
    }
    for (; i + eight <= count; i += eight)
        StoreEight(All(nan), numbers + i);
    StoreLast(All(nan), numbers, count);
}

// Finds a point in one of two directions, eight at a time: what begins or ends with less is filled up with NaN.
class CSearch
{
public:
    CSearch(const CStretch& stretch, const CTrend& trend, double gain, double level)
        : m_stretch(stretch), m_origin(All(trend.origin)), m_level(All(trend.level)), m_tilt(All(trend.tilt)),
          m_gain(All(gain)), m_most(All(level))
    {
    }

    std::size_t First() const
    {
        CEight indices = Ascending();
        for (std::size_t i = 0; i < m_stretch.count; i += eight) {
            if (const unsigned found = Find(i, indices); found != 0)
                return i + static_cast<std::size_t>(__builtin_ctz(found));
            indices = indices + All(eight);
        }
        return m_stretch.count;
    }

    // The eights are those of First(), so that the incomplete one is at the end.
    std::size_t Last() const
    {
        constexpr std::size_t highestBit = 31;
        std::size_t i = (m_stretch.count + eight - 1) / eight * eight;
        CEight indices = Ascending() + All(static_cast<double>(i));
        while (i > 0) {
            i -= eight;
            indices = indices - All(eight);
            if (const unsigned found = Find(i, indices); found != 0)
                return i + highestBit - static_cast<std::size_t>(__builtin_clz(found));
        }
        return m_stretch.count;
    }

private:
    // A bit for each of eight points that is one of those.
    [[gnu::always_inline]] unsigned Find(std::size_t i, const CEight& indices) const
    {
        const std::size_t left = m_stretch.count - i;
        const double* const from = m_stretch.signal + i;
        const CEight signal = left < eight ? LoadPart(from, left) : LoadEight(from);
        const CEight distance = signal - (m_level + m_tilt * (indices - m_origin));
        const unsigned found = Bits(m_gain * distance <= m_most);
        return found == 0 ? 0 : found & Bits(IsAcquired(signal));
    }

    CStretch m_stretch;
    CEight m_origin, m_level, m_tilt, m_gain, m_most;
};

std::size_t FirstAtMost(const CStretch& stretch, const CTrend& trend, double gain, double level)
{
    return CSearch(stretch, trend, gain, level).First();
}

std::size_t LastAtMost(const CStretch& stretch, const CTrend& trend, double gain, double level)
{
    return CSearch(stretch, trend, gain, level).Last();
}

constexpr CCurveKernels kernelsOfThisSource{Sums,           Blocks, Range,       Derive,
                                            HighestDerived, Erase,  FirstAtMost, LastAtMost};

} // namespace
// NOLINTEND(misc-definitions-in-headers,cert-dcl59-cpp)

} // namespace veltaris::curves
