// The loops of line operators, for the loops over samples: see SampleLoops.h.
#pragma once

#include "velflexlib/dataset/samples/kernels/SampleVectors.h"

namespace veltaris::velflexlib::dataset {

// NOLINTBEGIN(misc-definitions-in-headers,cert-dcl59-cpp): every source that includes this is to have its own
namespace {

template <class Stored>
std::int64_t Sum(const std::byte* stored, std::size_t count)
{
    const auto* const from = As<Stored>(stored);
    std::int64_t sum = 0;
    for (std::size_t i = 0; i < count; ++i)
        sum += RawOf<Stored>(std::int32_t{from[i]});
    return sum;
}

// v x^k for a vector of samples v with their indices x.
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

// Sums over all x of v C(u + k - 1, k), for k = 0 .. 4, to sums of v u^k, each a row of factors of these.
constexpr std::int64_t powersOfRising[5][5] = {
    {1, 0, 0, 0, 0}, {0, 1, 0, 0, 0}, {0, -1, 2, 0, 0}, {0, 1, -6, 6, 0}, {0, -1, 14, -36, 24}};

// With integers, of which the sums of sums of samples take nothing but additions. In sample i of n of a lane, counted
// from 0, these sums have the factor C(u + k - 1, k), where u = n - i. The index of the sample in its line is that of
// the lane plus i times the number of lanes. All of it is right modulo 2^64, and so are the results, whose magnitude is
// below 2^63.
template <class Stored, int Degree>
void MomentsInAnyOrder(const std::byte* stored, std::size_t count, double* moments)
{
    Longs sums[Degree + 1] = {};
    std::uint64_t n = 0;
    ForEachVector(As<Stored>(stored), count, [&](const Stored* piece) {
        sums[0] += LoadAs<Longs>(piece);
        for (int k = 1; k <= Degree; ++k)
            sums[k] += sums[k - 1];
        ++n;
    });
    Longs ofPower[Degree + 1] = {};
    std::uint64_t scale = 1;
    for (int k = 0; k <= Degree; ++k) {
        for (int i = 0; i <= k; ++i)
            ofPower[k] += sums[i] * static_cast<std::uint64_t>(powersOfRising[k][i]);
        ofPower[k] *= scale; // now with (x - lanes n - index of the lane)^k
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

// The terms of some vectors at a time, then one sum after the other: each is a chain of additions that wait for each
// other, but the processor works on all chains at once. Zeros behind the last sample add nothing.
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
        ForEachVector(samples + begin, left, [&](const Stored* piece) {
            const CTerms<Degree> ofPiece(piece, x);
            for (int k = 0; k <= Degree; ++k)
                Store(ofPiece.ofPower[k], terms[k] + i);
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

// The order of these additions is part of the result.
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

// Twice the raw range: subtracting more than that gives the same results, as long as integers can hold them.
constexpr double farOff = 0x1p30;
constexpr double tooFarOff = 0x1.4p30;

// One comparison for both ends of the range.
Ints IsMarker(const Ints& sample)
{
    using Naturals = VectorOf<std::uint32_t>;
    constexpr auto inner = static_cast<std::uint32_t>(highestRaw - lowestRaw - 1);
    return reinterpret_cast<Naturals>(sample - (lowestRaw + 1)) >= Naturals{} + inner;
}

template <class Stored, int Degree, bool ReachesFarOff>
void Correct(const Stored* samples, std::size_t count, double first, const double* coefficients,
             std::int32_t* corrected)
{
    double c[Degree + 1];
    __builtin_memcpy(c, coefficients, sizeof c);
    Doubles x = Ascending() + first;
    Transform(samples, count, corrected, [&](const Stored* piece) -> Ints {
        Doubles fitted = Polynomial<Degree>(c, x);
        x += static_cast<double>(lanes);
        if constexpr (ReachesFarOff) {
            fitted = fitted < farOff ? fitted : Doubles{} + farOff;
            fitted = fitted > -farOff ? fitted : Doubles{} - farOff;
        }
        const Ints sample = LoadRaw(piece);
        Ints result = sample - __builtin_convertvector(fitted, Ints); // cut towards zero
        result = result < lowestRaw ? Ints{} + lowestRaw : result;
        result = result > highestRaw ? Ints{} + highestRaw : result;
        return IsMarker(sample) ? sample : result;
    });
}

template <int Degree>
std::int32_t CorrectedSample(std::int32_t sample, double x, const double* c)
{
    if (sample <= lowestRaw || sample >= highestRaw)
        return sample;
    const double fitted = Polynomial<Degree>(c, x);
    const double near = fitted > farOff ? farOff : fitted < -farOff ? -farOff : fitted;
    return Clamped(sample - static_cast<std::int32_t>(near));
}

template <class Stored, int Degree>
void SubtractPolynomial(const std::byte* stored, std::size_t count, double first, const double* coefficients,
                        std::int32_t* corrected)
{
    const auto* const samples = As<Stored>(stored);
    if (count == 1) {
        *corrected = CorrectedSample<Degree>(RawOf<Stored>(std::int32_t{*samples}), first, coefficients);
        return;
    }
    const double end = first + static_cast<double>(count + lanes); // what fills the last vector up counts, too
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
