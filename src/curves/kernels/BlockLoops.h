// The robust choice of the blocks that a straight line is fitted to. See CurveLoops.h for how these sources are
// compiled; what it says of state and threads holds here, too.
#pragma once

#include "curves/kernels/PointSums.h"

namespace veltaris::curves {

// NOLINTBEGIN(misc-definitions-in-headers,cert-dcl59-cpp): every source that includes this is to have its own
namespace {

// The sums of the eight blocks side by side, each over the index from the middle of its block.
template <bool AreAllAcquired>
CPointSums BlockSums(const CStretch& stretch, const CTrend& rough)
{
    const std::size_t length = stretch.count / eight;
    const double middle = 0.5 * static_cast<double>(length - 1);
    CEight index = Ascending() * All(static_cast<double>(length)) - All(rough.origin);
    CEight within = All(-middle);
    CPointSums sums;
    const auto add = [&](const CEight& signal) {
        const CEight distance = DistanceFrom(rough, signal, index);
        if constexpr (AreAllAcquired)
            sums.AddAll(signal, within, distance);
        else
            sums.AddSome(IsAcquired(signal), signal, within, distance);
        index = index + All(1);
        within = within + All(1);
    };
    std::size_t i = 0;
    for (; i + 2 <= length; i += 2) {
        const CTwoEights signals = GatherTwo(stretch.signal + i, length);
        add(signals.first);
        add(signals.second);
    }
    if (i < length)
        add(Gather(stretch.signal + i, length));
    return sums;
}

// Tries without looking at single points first, since a point that was not acquired shows in the sums of its block.
CPointSums BlockSums(const CStretch& stretch, const CTrend& rough)
{
    CPointSums sums = BlockSums<true>(stretch, rough);
    if (!IsSumOfNumbers(Sum(sums.rr)))
        return BlockSums<false>(stretch, rough);
    const std::size_t pointsOfBlock = stretch.count / eight;
    const auto length = static_cast<double>(pointsOfBlock);
    sums.points = All(length);
    sums.uu = All(length * (length * length - 1) / 12);
    return sums;
}

// The sums of the blocks for which the mask holds, over the index minus an origin.
[[gnu::always_inline]] inline CSums Joined(const CPointSums& sums, const CMask& kept, const CEight& middle)
{
    const auto sum = [&kept](const CEight& numbers) { return Sum(Choose(kept, numbers, All(0))); };
    const CEight& n = sums.points;
    return {sum(n),
            sum(n * middle + sums.u),
            sum(n * middle * middle + All(2) * middle * sums.u + sums.uu),
            sum(sums.r),
            sum(middle * sums.r + sums.ur),
            sum(sums.rr),
            Lowest(Choose(kept, sums.lowest, All(infinity))),
            Highest(Choose(kept, sums.highest, All(-infinity)))};
}

// 1 / (j - i) for all pairs of blocks, and no number where i = j.
struct CReciprocals
{
    double of[eight][eight];
};
constexpr CReciprocals Reciprocals()
{
    CReciprocals reciprocals{};
    for (int i = 0; i < eight; ++i) {
        for (int j = 0; j < eight; ++j)
            reciprocals.of[i][j] = i == j ? nan : 1.0 / (j - i);
    }
    return reciprocals;
}
constexpr CReciprocals reciprocals = Reciprocals();

// The tilt from block to block by repeated medians. The mean of a block that is not there is no number; slopes that are
// not there become infinite, so that they come last.
[[gnu::always_inline]] inline double RepeatedMedian(const CEight& mean, int blocks)
{
    double means[eight];
    StoreEight(mean, means);
    CEight slopes[eight];
#pragma GCC unroll 8
    for (int i = 0; i < eight; ++i)
        slopes[i] = Lower((mean - All(means[i])) * LoadEight(reciprocals.of[i]), All(infinity));
    return Median(Median(slopes, blocks - 1), blocks);
}

// The variance of the points of each block from a line of a common tilt and a level of its own. The last factor takes
// the median of a variance with f degrees of freedom to its mean: (1 - 2 / (9 f))^3 (Wilson and Hilferty, PNAS 17,
// 1931).
[[gnu::always_inline]] inline CEight BlockVariances(const CPointSums& sums, const CEight& perPoint, double tilt)
{
    const CEight uu = sums.uu - sums.u * sums.u * perPoint;
    const CEight ur = sums.ur - sums.u * sums.r * perPoint;
    const CEight rr = sums.rr - sums.r * sums.r * perPoint;
    const CEight squares = rr - All(tilt) * (All(2) * ur - All(tilt) * uu);
    const CEight freedom = sums.points - All(1);
    const CEight root = All(9) * freedom - All(2);
    return Higher(squares, All(0)) * ((All(729) * freedom * freedom) / (root * root * root));
}

// The medians of the blocks' levels and variances, and half of the shortest range that holds the levels of more than
// half of the blocks (Rousseeuw, Journal of the American Statistical Association 79, 1984).
struct CMiddle
{
    double level;
    double variance;
    double reach;
};

[[gnu::always_inline]] inline CMiddle MiddleOf(const CEight& levels, const CEight& variances, int count)
{
    double pairs[2][eight];
    StoreEight(levels, pairs[0]);
    StoreEight(variances, pairs[1]);
    CPair rows[eight];
#pragma GCC unroll 8
    for (int i = 0; i < eight; ++i)
        rows[i].both = CPair::Vector{pairs[0][i], pairs[1][i]};
    const CPair medians = Median(rows, count);
    double shortest = infinity;
    for (int i = 0; i + count / 2 < count; ++i)
        shortest = Lower(rows[i + count / 2].both[0] - rows[i].both[0], shortest);
    return {medians.both[0], medians.both[1], 0.5 * shortest};
}

// Which blocks lie on the first line: their levels by no more than the larger of 3 standard errors and 6 times the
// reach, and their variances by no more than 6 of their own standard deviations. All of it is squared.
[[gnu::always_inline]] inline CMask AreOnLine(const CEight& levels, const CEight& variances, const CMiddle& middle,
                                              const CEight& points, const CEight& perPoint)
{
    const CEight distance = levels - All(middle.level);
    const CEight farthest = Higher(All(9 * middle.variance) * perPoint, All(36 * middle.reach * middle.reach));
    const CEight excess = Higher(variances - All(middle.variance), All(0));
    const CEight freedom = points - All(1);
    return (distance * distance <= farthest) &
           (excess * excess * freedom <= All(72 * middle.variance * middle.variance));
}

// What the choice of blocks takes beside their sums.
struct CWindow
{
    double length; // points of a block
    double origin; // of the rough line
    double leastWidth;
};

// Chooses among the blocks of which the mask says that they are there, `count` of them.
[[gnu::always_inline]] inline void ChooseBlocks(CBlocks& blocks, const CPointSums& sums, const CMask& present,
                                                int count, const CWindow& window)
{
    const CEight none = All(infinity);
    const CEight place = Ascending() - All(0.5 * (eight - 1));
    const CEight perPoint = All(1) / sums.points;
    const CEight mean = Choose(present, sums.r * perPoint, All(nan));
    const double tilt = RepeatedMedian(mean, count);
    const CEight levels = Lower(mean - All(tilt) * place, none);
    const CEight variances = Choose(present, BlockVariances(sums, perPoint, tilt / window.length), none);
    CMiddle middle = MiddleOf(levels, variances, count);
    middle.variance = Higher(middle.variance, window.leastWidth * window.leastWidth);
    blocks.variance = middle.variance;
    const CMask kept = present & AreOnLine(levels, variances, middle, sums.points, perPoint);
    blocks.kept = Sum(Choose(kept, All(1), All(0)));
    blocks.sums = Joined(sums, kept, (Ascending() + All(0.5)) * All(window.length) - All(0.5 + window.origin));
}

CBlocks Blocks(const CStretch& stretch, const CTrend& rough, double leastWidth)
{
    const CPointSums sums = BlockSums(stretch, rough);
    const CMask present = All(2) <= sums.points;
    const double there = Sum(Choose(present, All(1), All(0)));
    CBlocks blocks{Sum(sums.points), there, 0, 0, {}};
    const std::size_t pointsOfBlock = stretch.count / eight;
    const CWindow window{static_cast<double>(pointsOfBlock), rough.origin, leastWidth};
    if (there == eight)
        ChooseBlocks(blocks, sums, present, eight, window);
    else if (there >= 2)
        ChooseBlocks(blocks, sums, present, static_cast<int>(there), window);
    return blocks;
}

} // namespace
// NOLINTEND(misc-definitions-in-headers,cert-dcl59-cpp)

} // namespace veltaris::curves
