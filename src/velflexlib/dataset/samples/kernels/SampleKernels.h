// The loops over samples, in as wide instructions as the processor has. These are the only functions of the library
// that touch every sample of a line, so they decide its speed.
//
// Sets of loops are immutable tables of functions without state: any number of threads can use them at once.
#pragma once

#include <cstddef>
#include <cstdint>

namespace veltaris::velflexlib::dataset {

// What must be known of all samples of a line before they can be written. Samples that come from a caller count as if
// they had been clamped to the raw range. Of no samples, `lowest` is above `highest`.
struct CSampleSurvey
{
    std::int32_t lowest;
    std::int32_t highest;
    std::int32_t bits; // every bit that is set in at least one sample
};

// The real values of the lowest and of the highest raw sample. They must differ by so much that no step of a conversion
// underflows in a way that shows, and be so far from infinity that none overflows.
struct CSignalAxis
{
    double min;
    double max;
};

// Loops over the samples of a line as they are stored in one width, at an address that is a multiple of that width.
struct CStoredKernels
{
    // Convert between stored and raw samples.
    void (*widen)(const std::byte* stored, std::size_t count, std::int32_t* raw);
    void (*narrow)(const std::int32_t* raw, std::size_t count, std::byte* stored);

    // These and all that follow work on the raw values of the stored samples.
    CSampleSurvey (*survey)(const std::byte* stored, std::size_t count);
    std::int64_t (*sum)(const std::byte* stored, std::size_t count);

    // Indexed by the degree of a polynomial, which is 1, 2 or 4. They compute the sums of v x^k, for k = 0 .. degree,
    // over all samples v with their index x. The sums in order are added in ascending order of x, which decides how
    // they are rounded. Those in any order are faster, but only right if the sums are exact as doubles, and those of
    // the stored samples, taken as integers, fit into 63 bits and a sign.
    using Moments = void (*)(const std::byte* stored, std::size_t count, double* moments);
    Moments momentsInAnyOrder[5];
    Moments momentsInOrder[5];

    // Indexed by the degree of a polynomial in x, which is 0, 1, 2 or 4 and is given by its coefficients in ascending
    // order of powers. They subtract the polynomial, cut towards zero, from a chunk of a line whose first sample has
    // the index `first`, and clamp the results to the raw range. Samples at an end of the raw range stay.
    using Subtract = void (*)(const std::byte* stored, std::size_t count, double first, const double* coefficients,
                              std::int32_t* corrected);
    Subtract subtract[5];

    // Subtracts each sample from the next one, in wrapping arithmetic. `count` + 1 samples are read, unless it is 0.
    void (*differences)(const std::byte* stored, std::size_t count, std::int32_t* differences);
};

// One set of loops. Any `count` is allowed. What is read and what is written must not overlap. All sets give the same
// results, bit for bit, as long as the moments in any order are only used where they are exact.
struct CSampleKernels
{
    CStoredKernels stored8, stored16, stored32;

    void (*clamp)(const std::int32_t* from, std::size_t count, std::int32_t* to);
    CSampleSurvey (*survey)(const std::int32_t* from, std::size_t count);

    // Convert between raw samples and real values, as CSignalScale describes it.
    void (*toReal)(const std::int32_t* from, std::size_t count, const CSignalAxis& axis, double* to);
    void (*toRaw)(const double* from, std::size_t count, const CSignalAxis& axis, std::int32_t* to);
};

// The set with the widest instructions that this processor has.
const CSampleKernels& Kernels();

// One set for all processors and two for x86-64 processors: those with AVX2 and FMA, and those that also have AVX-512
// for integers of all widths. A set may only be called on a processor that has its instructions.
extern const CSampleKernels baselineKernels;
extern const CSampleKernels avx2Kernels;
extern const CSampleKernels avx512Kernels;

} // namespace veltaris::velflexlib::dataset
