// The loops over samples, in as wide instructions as the processor has.
#pragma once

#include <cstddef>
#include <cstdint>

namespace veltaris::velflexlib::dataset {

// What writing raw samples must know of them, those that come from a caller clamped to the raw range.
struct CSampleSurvey
{
    std::int32_t lowest;
    std::int32_t highest;
    std::int32_t bits; // all bits that some sample has
};

// The real values of the ends of the raw range: two different ones, so far from infinity that nothing overflows, and so
// far from each other that nothing that shows underflows.
struct CSignalAxis
{
    double min;
    double max;
};

// Loops over the samples of a line as they are stored, in one width, at an address that is a multiple of it.
struct CStoredKernels
{
    // Between stored and raw samples.
    void (*widen)(const std::byte* stored, std::size_t count, std::int32_t* raw);
    void (*narrow)(const std::int32_t* raw, std::size_t count, std::byte* stored);

    // Of the raw values that the samples have, as all that follows.
    CSampleSurvey (*survey)(const std::byte* stored, std::size_t count);
    std::int64_t (*sum)(const std::byte* stored, std::size_t count);

    // By the degree of a polynomial, which is 1, 2 or 4: the sums of v x^k, for k = 0 .. degree, over all samples v
    // with their index x. Rounding depends on the order of these additions, unless all of them are exact.
    using Moments = void (*)(const std::byte* stored, std::size_t count, double* moments);
    Moments momentsInAnyOrder[5];
    Moments momentsInOrder[5]; // ascending

    // By the degree, which is 0, 1, 2 or 4: what is left when a polynomial in x, given by its coefficients in ascending
    // order, is subtracted from a piece of a line, whose first sample has the index `first`.
    using Subtract = void (*)(const std::byte* stored, std::size_t count, double first, const double* coefficients,
                              std::int32_t* corrected);
    Subtract subtract[5];

    // The distance from each sample to the next one, wrapping; `count` + 1 samples are there.
    void (*differences)(const std::byte* stored, std::size_t count, std::int32_t* differences);
};

// One set of loops. `count` may be anything; what is read and what is written do not overlap. Whatever the set, the
// results are the same, except for sums that are not exact.
struct CSampleKernels
{
    CStoredKernels stored8, stored16, stored32;

    void (*clamp)(const std::int32_t* from, std::size_t count, std::int32_t* to);
    CSampleSurvey (*survey)(const std::int32_t* from, std::size_t count);

    // Between raw samples and real values.
    void (*toReal)(const std::int32_t* from, std::size_t count, const CSignalAxis& axis, double* to);
    void (*toRaw)(const double* from, std::size_t count, const CSignalAxis& axis, std::int32_t* to);
};

// The set to use on this processor.
const CSampleKernels& Kernels();

// Sets for x86-64 processors: all of them, those with AVX2 and FMA, those with AVX-512 for integers of all widths, too.
// Only what the processor has may be called.
extern const CSampleKernels baselineKernels;
extern const CSampleKernels avx2Kernels;
extern const CSampleKernels avx512Kernels;

} // namespace veltaris::velflexlib::dataset
