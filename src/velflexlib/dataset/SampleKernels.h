// The loops over samples, in as wide instructions as the processor has.
#pragma once

#include <cstddef>
#include <cstdint>

namespace veltaris::velflexlib::dataset {

// What writing raw samples must know of them, each clamped to the raw range.
struct CSampleSurvey
{
    std::int32_t lowest;
    std::int32_t highest;
    std::int32_t bits; // all bits that some sample has
};

// The real values of the ends of the raw range: two different ones, so far from infinity that nothing overflows.
struct CSignalAxis
{
    double min;
    double max;
};

// One set of loops. `count` may be anything; `from` and `to` are the same or do not overlap. Whatever the set, the
// results are the same, except for sums that are not exact.
struct CSampleKernels
{
    // Stored samples to raw ones.
    void (*widen8)(const std::int8_t* from, std::size_t count, std::int32_t* to);
    void (*widen16)(const std::int16_t* from, std::size_t count, std::int32_t* to);
    void (*widen32)(const std::int32_t* from, std::size_t count, std::int32_t* to);

    // Raw samples to stored ones.
    void (*narrow8)(const std::int32_t* from, std::size_t count, std::int8_t* to);
    void (*narrow16)(const std::int32_t* from, std::size_t count, std::int16_t* to);
    void (*narrow32)(const std::int32_t* from, std::size_t count, std::int32_t* to);

    void (*clamp)(const std::int32_t* from, std::size_t count, std::int32_t* to);
    CSampleSurvey (*survey)(const std::int32_t* from, std::size_t count);

    // Between raw samples and real values.
    void (*toReal)(const std::int32_t* from, std::size_t count, const CSignalAxis& axis, double* to);
    void (*toRaw)(const double* from, std::size_t count, const CSignalAxis& axis, std::int32_t* to);

    std::int64_t (*sum)(const std::int32_t* samples, std::size_t count);

    // Adds v x^k to moments[k], for k = 0 .. Degree and all samples v with their index x in a line, of which `first` is
    // that of the first sample. The order of these additions shows, unless all of them are exact.
    using Moments = void (*)(const std::int32_t* samples, std::size_t count, double first, double* moments);
    Moments moments1, moments2, moments4;

    // Subtracts a polynomial in x, given by its coefficients in ascending order, from a piece of a line.
    using Subtract = void (*)(std::int32_t* samples, std::size_t count, double first, const double* coefficients);
    Subtract subtract0, subtract1, subtract2, subtract4;

    // Replaces each sample by its distance to the next one, wrapping; `count` + 1 samples are there.
    void (*differences)(std::int32_t* samples, std::size_t count);
};

// The set to use on this processor.
const CSampleKernels& Kernels();

// Sets for x86-64 processors: all of them, those with AVX2, those with AVX-512 for integers of all widths. Only what
// the processor has may be called.
extern const CSampleKernels baselineKernels;
extern const CSampleKernels avx2Kernels;
extern const CSampleKernels avx512Kernels;

} // namespace veltaris::velflexlib::dataset
