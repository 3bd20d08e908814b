// The loops of the line operators: sums over a line, which polynomials are fitted by, and the subtraction of a fitted
// polynomial. See SampleLoops.h for how these sources are compiled.
//
// Invariant: whatever the width of the vectors, all results have the same bits. Sums of integers are exact, so the
// order of additions does not matter; where doubles are rounded, each loop adds them in one order that it documents.
// The compiler may not contract multiplications and additions here, because that rounds differently: the build forbids
// it. Like all loops over samples, these hold no state and can run in any number of threads.
#pragma once

#include "velflexlib/dataset/samples/kernels/SampleVectors.h"

namespace veltaris::velflexlib::dataset {

// NOLINTBEGIN(misc-definitions-in-headers,cert-dcl59-cpp): every source that includes this is to have its own
namespace {

// The sum of at most 2^33 raw samples, which cannot overflow.
template <class Stored>
std::int64_t Sum(const std::byte* stored, std::size_t count)
{
    const auto* const from = As<Stored>(stored);
    std::int64_t sum = 0;
    for (std::size_t i = 0; i < count; ++i)
        sum += RawOf<Stored>(std::int32_t{from[i]});
    return sum;
}

// The terms v x^k, for k = 0 .. Degree, of a vector of samples v that have the indices x. Each is the one before times
// x: they are rounded in this order.
template <int Degree>
struct CTerms
{
    template <class Stored>
    [[gnu::always_inline]] CTerms(const Stored* samples, const Doubles& x)
    {
        ofPower[0] = __builtin_convertvector(LoadRaw(samples), Doubles);
        for (int k = 1; k <= Degree; ++k)
            ofPower[k] = ofPower[k - 1] * x;
    }

    Doubles ofPower[Degree + 1] = {};
};

// Row k gives u^k as a combination of the binomial coefficients C(u + i - 1, i), for i = 0 .. k. Up to their sign,
// which alternates, these numbers are i! times the number of ways to divide k things into i groups. So u^2 is 2 C(u +
// 1, 2) - u, and the last number of row k is k!.
constexpr std::int64_t powersOfRising[5][5] = {
    {1, 0, 0, 0, 0}, {0, 1, 0, 0, 0}, {0, -1, 2, 0, 0}, {0, 1, -6, 6, 0}, {0, -1, 14, -36, 24}};

// The moments as exact integers. Running sums of running sums need nothing but one addition for each power and vector:
// after n vectors, `sums[k]` holds the sum of v C(u + k - 1, k) over the samples v of a lane, where u = n - i for the
// sample of vector i, because sample i has by then been counted 1, u, u (u + 1) / 2, ... times. From these sums follow,
// in this order,
//  - the sums of v u^k, by the rows of powersOfRising,
//  - the sums of v (-lanes u)^k, by a factor for each power,
//  - the sums of v x^k, because the sample's index in the line is x = origin - lanes u, where origin = lane + lanes n:
//    `Degree` passes add the origin to what is raised to the power k, by the binomial theorem.
//
// Every step is an addition, subtraction or multiplication of integers, hence right modulo 2^64 even where it wraps.
// That makes the result right if its true value fits into 63 bits and a sign, which the caller has checked, as it has
// checked that this value is exact as a double.
template <class Stored, int Degree>
void MomentsInAnyOrder(const std::byte* stored, std::size_t count, double* moments)
{
    Longs sums[Degree + 1] = {};
    std::uint64_t n = 0;
    ForEachVector(As<Stored>(stored), count, [&](const Stored* vector) {
        sums[0] += LoadAs<Longs>(vector);
        for (int k = 1; k <= Degree; ++k)
            sums[k] += sums[k - 1];
        ++n;
    });
    Longs ofPower[Degree + 1] = {};
    std::uint64_t scale = 1;
    for (int k = 0; k <= Degree; ++k) {
        for (int i = 0; i <= k; ++i)
            ofPower[k] += sums[i] * static_cast<std::uint64_t>(powersOfRising[k][i]);
        ofPower[k] *= scale; // now the sum of v (x - origin)^k
        scale *= -lanes;
    }
    const Longs origin = __builtin_convertvector(Ascending(), Longs) + lanes * n;
    for (int pass = 1; pass <= Degree; ++pass) {
        for (int k = Degree; k >= pass; --k)
            ofPower[k] += ofPower[k - 1] * origin;
    }
    for (int k = 0; k <= Degree; ++k) {
        std::uint64_t sum = 0;
        for (std::size_t lane = 0; lane < lanes; ++lane)
            sum += ofPower[k][lane];
        moments[k] = static_cast<double>(static_cast<std::int64_t>(sum)) * rawPerStored<Stored>;
    }
}

// The moments as doubles, each added in ascending order of x, which is what the rounded result is defined by. Additions
// of one moment have to wait for each other, but those of different moments do not. So the terms of a few vectors are
// computed first, and the processor then adds to all moments at once. The zeros behind the last sample add nothing.
template <class Stored, int Degree>
void MomentsInOrder(const std::byte* stored, std::size_t count, double* moments)
{
    constexpr std::size_t samplesAtATime = 32;
    double sums[Degree + 1] = {};
    double terms[Degree + 1][samplesAtATime];
    Doubles x = Ascending();
    const auto* const samples = As<Stored>(stored);
    for (std::size_t begin = 0; begin < count; begin += samplesAtATime) {
        const std::size_t left = count - begin < samplesAtATime ? count - begin : samplesAtATime;
        std::size_t i = 0;
        ForEachVector(samples + begin, left, [&](const Stored* vector) {
            const CTerms<Degree> ofVector(vector, x);
            for (int k = 0; k <= Degree; ++k)
                Store(ofVector.ofPower[k], terms[k] + i);
            x += static_cast<double>(lanes);
            i += lanes;
        });
        for (int k = 0; k <= Degree; ++k) {
            for (std::size_t term = 0; term < i; ++term)
                sums[k] += terms[k][term];
        }
    }
    __builtin_memcpy(moments, sums, sizeof sums);
}

// The value of a polynomial with the coefficients c at x. The order of these additions and multiplications is part of
// the result, because they are rounded.
template <int Degree, class Number>
[[gnu::always_inline]] inline Number Polynomial(const double* c, const Number& x)
{
    if constexpr (Degree == 0)
        return Number{} + c[0];
    const Number square = x * x;
    Number value = c[0] + c[1] * x;
    if constexpr (Degree >= 2)
        value += c[2] * square;
    if constexpr (Degree >= 4)
        value = value + c[3] * square * x + c[4] * square * square;
    return value;
}

// The number of raw values. A fitted value of this magnitude takes every sample to the end of the raw range, and so
// does any larger one, which may therefore be replaced by it. A value below `tooFarOff` needs no replacement: it fits
// into 32 bits, and so does its difference from any sample. The quarter between the two allows for rounding.
constexpr double farOff = rawSpan + 1;
constexpr double tooFarOff = 1.25 * farOff;

// Whether samples are at an end of the raw range. Counting from the sample above the lower end, in wrapping unsigned
// arithmetic, takes one comparison for both ends.
Ints IsMarker(const Ints& sample)
{
    using Naturals = VectorOf<std::uint32_t>;
    constexpr auto inner = static_cast<std::uint32_t>(highestRaw - lowestRaw - 1);
    return reinterpret_cast<Naturals>(sample - (lowestRaw + 1)) >= Naturals{} + inner;
}

// `ReachesFarOff` says whether a fitted value could be too far off to be converted to an integer.
template <class Stored, int Degree, bool ReachesFarOff>
void Correct(const Stored* samples, std::size_t count, double first, const double* coefficients,
             std::int32_t* corrected)
{
    double c[Degree + 1];
    __builtin_memcpy(c, coefficients, sizeof c);
    Doubles x = Ascending() + first;
    Transform(samples, count, corrected, [&](const Stored* vector) -> Ints {
        Doubles fitted = Polynomial<Degree>(c, x);
        x += static_cast<double>(lanes);
        if constexpr (ReachesFarOff) {
            fitted = fitted < farOff ? fitted : Doubles{} + farOff;
            fitted = fitted > -farOff ? fitted : Doubles{} - farOff;
        }
        const Ints sample = LoadRaw(vector);
        Ints result = sample - __builtin_convertvector(fitted, Ints); // cut towards zero
        result = result < lowestRaw ? Ints{} + lowestRaw : result;
        result = result > highestRaw ? Ints{} + highestRaw : result;
        return IsMarker(sample) ? sample : result;
    });
}

// The same for a single sample, which is a pixel that a caller reads.
template <int Degree>
std::int32_t CorrectedSample(std::int32_t sample, double x, const double* c)
{
    if (sample <= lowestRaw || sample >= highestRaw)
        return sample;
    const double fitted = Polynomial<Degree>(c, x);
    const double near = fitted > farOff ? farOff : fitted < -farOff ? -farOff : fitted;
    return Clamped(sample - static_cast<std::int32_t>(near));
}

// Corrects a chunk of a line whose first sample has the index `first`. The sum of the magnitudes of the polynomial's
// terms at the end of the chunk bounds every fitted value.
template <class Stored, int Degree>
void SubtractPolynomial(const std::byte* stored, std::size_t count, double first, const double* coefficients,
                        std::int32_t* corrected)
{
    const auto* const samples = As<Stored>(stored);
    if (count == 1) {
        *corrected = CorrectedSample<Degree>(RawOf<Stored>(std::int32_t{*samples}), first, coefficients);
        return;
    }
    const double end = first + static_cast<double>(count + lanes); // includes what fills up the last vector
    double bound = 0;
    for (int k = Degree; k >= 0; --k)
        bound = bound * end + __builtin_fabs(coefficients[k]);
    if (bound < tooFarOff)
        Correct<Stored, Degree, false>(samples, count, first, coefficients, corrected);
    else
        Correct<Stored, Degree, true>(samples, count, first, coefficients, corrected);
}

} // namespace
// NOLINTEND(misc-definitions-in-headers,cert-dcl59-cpp)

} // namespace veltaris::velflexlib::dataset
