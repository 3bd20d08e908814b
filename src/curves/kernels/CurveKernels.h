// The loops over the points of a curve, in as wide instructions as the processor has. All else in the folders above
// works on the few numbers that these give.
//
// Invariant: all sets give the same results, bit for bit. Every sum is kept in eight parts, to which points are added
// in turns, whatever the width of the vectors, and a rest of fewer than eight as the last ones of eight; products are
// rounded before they are added, which the build takes care of.
//
// Sets of loops are immutable tables of functions without state: any number of threads can use them at once.
#pragma once

#include <cstddef>

namespace veltaris::curves {

// Signals beyond this count as not acquired, as a NaN does: the sums of their squares might not be numbers.
inline constexpr double largestSignal = 1e150;

// Part of a curve: consecutive points, which the functions below count from 0. Points that were not acquired take part
// in nothing.
struct CStretch
{
    const double* signal;
    std::size_t count;
};

// A straight line over the index: level + tilt u, where u = index - origin.
struct CTrend
{
    double origin;
    double level;
    double tilt;
};

// Sums over the points of a stretch, of their distance r from a trend.
struct CSums
{
    double points;
    double u, uu;
    double r, ur, rr;
    double lowest, highest; // of the signal itself; infinities of the wrong sign if there is no point
};

// What a robust fit of a line rests on, of eight blocks of equal length. A block is there if two of its points at least
// were acquired; with fewer than two blocks there is nothing but `points` and `blocks`.
struct CBlocks
{
    double points; // acquired
    double blocks; // that are there
    double kept;   // blocks on the line that repeated medians give (Siegel, Biometrika 69, 1982)
    double
        variance; // of points about lines of its tilt: the median of the blocks, but no less than `leastWidth` squared
    CSums sums;   // of the blocks that are kept
};

// The lowest and the highest acquired signal; infinities of the wrong sign if there is none.
struct CRange
{
    double lowest;
    double highest;
};

// For each point: gain signal + offset + rise u, where u = index - origin.
struct CDerivation
{
    double origin;
    double gain;
    double offset;
    double rise;
};

// The highest derived value and its first index; -infinity and `count` if no point was acquired.
struct CHighest
{
    double value;
    std::size_t index;
};

struct CCurveKernels
{
    CSums (*sums)(const CStretch& stretch, const CTrend& trend);

    // The stretch has a multiple of eight points. The closer the rough line, the less is lost to rounding. BlockLoops.h
    // says which blocks are kept.
    CBlocks (*blocks)(const CStretch& stretch, const CTrend& rough, double leastWidth);

    CRange (*range)(const CStretch& stretch);

    // Writes the derived values to `derived`, with a NaN for points that were not acquired. It may be the signal
    // itself.
    CHighest (*derive)(const CStretch& stretch, const CDerivation& derivation, double* derived);

    // The same without writing.
    CHighest (*highest)(const CStretch& stretch, const CDerivation& derivation);

    // Fills an array with NaN.
    void (*erase)(double* numbers, std::size_t count);

    // The first or the last acquired point for which gain (signal - trend) <= level; `count` if there is none. The gain
    // is 1 or -1.
    std::size_t (*firstAtMost)(const CStretch& stretch, const CTrend& trend, double gain, double level);
    std::size_t (*lastAtMost)(const CStretch& stretch, const CTrend& trend, double gain, double level);
};

// The set with the widest instructions that this processor has.
const CCurveKernels& CurveKernels();

// One set for all processors and two for x86-64 processors, as velstdlib::machine::InstructionSet has them. A set may
// only be called on a processor that has its instructions.
extern const CCurveKernels baselineCurveKernels;
extern const CCurveKernels avx2CurveKernels;
extern const CCurveKernels avx512CurveKernels;

} // namespace veltaris::curves
