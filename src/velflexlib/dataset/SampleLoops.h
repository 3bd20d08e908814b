// The bodies of the loops over samples, to be compiled once for each width of vectors: for one source each, whose
// compiler options say which instructions there are. Everything here is that source's own. It may call nothing that
// other sources could share, not even an inline function of the standard library: the linker keeps one copy of those,
// and the processor may lack the instructions of the one that it keeps.
#pragma once

#include "velflexlib/dataset/SampleKernels.h"

#if defined(__AVX2__)
#include <immintrin.h>
#endif

namespace veltaris::velflexlib::dataset {

// NOLINTBEGIN(misc-definitions-in-headers,cert-dcl59-cpp): every source that includes this is to have its own
namespace {

constexpr std::int32_t lowestRaw = -536870912;
constexpr std::int32_t highestRaw = 536870911;
constexpr double rawSpan = 1073741823; // highestRaw - lowestRaw

#if defined(__AVX512F__)
constexpr std::size_t lanes = 8;
#elif defined(__AVX2__)
constexpr std::size_t lanes = 4;
#else
constexpr std::size_t lanes = 2;
#endif

template <class Element>
struct CVectorOf
{
    using Type [[gnu::vector_size(lanes * sizeof(Element))]] = Element;
};

template <class Element>
using VectorOf = typename CVectorOf<Element>::Type;

using Ints = VectorOf<std::int32_t>;
using Longs = VectorOf<std::uint64_t>; // in wrapping arithmetic
using Doubles = VectorOf<double>;

template <class Vector, class Element>
Vector Load(const Element* from)
{
    Vector vector;
    __builtin_memcpy(&vector, from, sizeof vector);
    return vector;
}

template <class Vector, class Element>
void Store(const Vector& vector, Element* to)
{
    __builtin_memcpy(to, &vector, sizeof vector);
}

// The indices from 0 on.
Doubles Ascending()
{
    Doubles ascending;
    for (std::size_t lane = 0; lane < lanes; ++lane)
        ascending[lane] = static_cast<double>(lane);
    return ascending;
}

// Calls step(from + i) for every vector of the elements, the last one filled up with zeros.
template <class From, class Step>
void ForEachVector(const From* from, std::size_t count, Step step)
{
    std::size_t i = 0;
    for (; i + lanes <= count; i += lanes)
        step(from + i);
    if (i == count)
        return;
    From last[lanes] = {};
    __builtin_memcpy(last, from + i, (count - i) * sizeof(From));
    step(last);
}

// Stores step(from + i) for every vector of the elements.
template <class From, class To, class Step>
void Transform(const From* from, std::size_t count, To* to, Step step)
{
    const std::size_t whole = count - count % lanes;
    for (std::size_t i = 0; i < whole; i += lanes)
        Store(step(from + i), to + i);
    ForEachVector(from + whole, count - whole, [&](const From* vector) {
        To last[lanes];
        Store(step(vector), last);
        __builtin_memcpy(to + whole, last, (count - whole) * sizeof(To));
    });
}

constexpr std::int32_t Clamped(std::int32_t sample)
{
    return sample < lowestRaw ? lowestRaw : sample > highestRaw ? highestRaw : sample;
}

// The raw value of a stored sample, or of a vector of them that was widened: its bits are the highest of all, those of
// 32 bits have two to spare.
template <class Stored, class Value>
constexpr Value RawOf(Value value)
{
    if constexpr (sizeof(Stored) == 4)
        return value >> 2;
    else
        return value << (30 - 8 * static_cast<int>(sizeof(Stored)));
}

template <class Stored>
constexpr double rawPerStored = 0x1p30 / (1LL << (8 * sizeof(Stored)));

template <class Stored>
constexpr Stored StoredOf(std::int32_t raw)
{
    if constexpr (sizeof(Stored) == 4)
        return raw << 2;
    else
        return static_cast<Stored>(raw >> (30 - 8 * static_cast<int>(sizeof(Stored))));
}

template <class To, class Stored>
To LoadAs(const Stored* stored)
{
    return __builtin_convertvector(Load<VectorOf<Stored>>(stored), To);
}

// One instruction each, which the compiler does not find by itself.
#if defined(__AVX512F__)
constexpr __mmask8 everyLane = 0xFF; // GCC 12 warns of its own header without
template <>
Ints LoadAs<Ints>(const std::int8_t* stored)
{
    return reinterpret_cast<Ints>(_mm256_cvtepi8_epi32(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(stored))));
}
template <>
Ints LoadAs<Ints>(const std::int16_t* stored)
{
    return reinterpret_cast<Ints>(_mm256_cvtepi16_epi32(_mm_loadu_si128(reinterpret_cast<const __m128i*>(stored))));
}
template <>
Longs LoadAs<Longs>(const std::int8_t* stored)
{
    return reinterpret_cast<Longs>(
        _mm512_maskz_cvtepi8_epi64(everyLane, _mm_loadl_epi64(reinterpret_cast<const __m128i*>(stored))));
}
template <>
Longs LoadAs<Longs>(const std::int16_t* stored)
{
    return reinterpret_cast<Longs>(
        _mm512_maskz_cvtepi16_epi64(everyLane, _mm_loadu_si128(reinterpret_cast<const __m128i*>(stored))));
}
#elif defined(__AVX2__)
template <>
Ints LoadAs<Ints>(const std::int16_t* stored)
{
    return reinterpret_cast<Ints>(_mm_cvtepi16_epi32(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(stored))));
}
template <>
Longs LoadAs<Longs>(const std::int16_t* stored)
{
    return reinterpret_cast<Longs>(_mm256_cvtepi16_epi64(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(stored))));
}
#endif

template <class Stored>
Ints LoadRaw(const Stored* stored)
{
    return RawOf<Stored>(LoadAs<Ints>(stored));
}

template <class Stored>
const Stored* As(const std::byte* bytes)
{
    return reinterpret_cast<const Stored*>(bytes);
}

template <class Stored>
void Widen(const std::byte* stored, std::size_t count, std::int32_t* raw)
{
    const auto* const from = As<Stored>(stored);
    for (std::size_t i = 0; i < count; ++i)
        raw[i] = RawOf<Stored>(std::int32_t{from[i]});
}

template <class Stored>
void Narrow(const std::int32_t* raw, std::size_t count, std::byte* stored)
{
    auto* const to = reinterpret_cast<Stored*>(stored);
    for (std::size_t i = 0; i < count; ++i)
        to[i] = StoredOf<Stored>(raw[i]);
}

void Clamp(const std::int32_t* from, std::size_t count, std::int32_t* to)
{
    for (std::size_t i = 0; i < count; ++i)
        to[i] = Clamped(from[i]);
}

template <class From, class ToRaw>
[[gnu::always_inline]] inline CSampleSurvey SurveyOf(const From* from, std::size_t count, ToRaw toRaw)
{
    CSampleSurvey survey{highestRaw, lowestRaw, 0};
    for (std::size_t i = 0; i < count; ++i) {
        const std::int32_t sample = toRaw(from[i]);
        survey.lowest = sample < survey.lowest ? sample : survey.lowest;
        survey.highest = sample > survey.highest ? sample : survey.highest;
        survey.bits |= sample;
    }
    return survey;
}

CSampleSurvey Survey(const std::int32_t* from, std::size_t count)
{
    return SurveyOf(from, count, Clamped);
}

template <class Stored>
CSampleSurvey SurveyStored(const std::byte* stored, std::size_t count)
{
    return SurveyOf(As<Stored>(stored), count, RawOf<Stored, std::int32_t>);
}

void ToReal(const std::int32_t* from, std::size_t count, const CSignalAxis& axis, double* to)
{
    const double min = axis.min;
    const double extent = axis.max - min;
    Transform(from, count, to, [=](const std::int32_t* raw) -> Doubles {
        const Doubles aboveLowest = __builtin_convertvector(Load<Ints>(raw), Doubles) - static_cast<double>(lowestRaw);
        return min + extent * aboveLowest / rawSpan;
    });
}

// Values at or beyond the ends of the axis become the ends of the raw range, a NaN the lower one.
void ToRaw(const double* from, std::size_t count, const CSignalAxis& axis, std::int32_t* to)
{
    const double min = axis.min;
    const double extent = axis.max - min;
    const bool rising = axis.max > min;
    const double small = rising ? min : axis.max;
    const double large = rising ? axis.max : min;
    const std::int32_t rawOfSmall = rising ? lowestRaw : highestRaw;
    const std::int32_t rawOfLarge = rising ? highestRaw : lowestRaw;
    Transform(from, count, to, [=](const double* real) -> Ints {
        const auto value = Load<Doubles>(real);
        Doubles steps = (value - min) * rawSpan / extent;
        steps = steps > 0.0 ? steps : Doubles{};
        steps = steps < rawSpan ? steps : Doubles{} + rawSpan;
        Ints raw = __builtin_convertvector(steps + static_cast<double>(lowestRaw), Ints);
        raw = __builtin_convertvector(value <= small, Ints) ? Ints{} + rawOfSmall : raw;
        return __builtin_convertvector(value >= large, Ints) ? Ints{} + rawOfLarge : raw;
    });
}

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

    Doubles ofPower[Degree + 1];
};

// Sums over all x of v C(u + k - 1, k), for k = 0 .. 4, to sums of v u^k, each a row of factors of these.
constexpr std::int64_t powersOfRising[5][5] = {
    {1, 0, 0, 0, 0}, {0, 1, 0, 0, 0}, {0, -1, 2, 0, 0}, {0, 1, -6, 6, 0}, {0, -1, 14, -36, 24}};

// With integers, of which the sums of sums of samples take nothing but additions. In sample i of n of a lane, counted
// from 0, these sums have the factor C(u + k - 1, k), where u = n - i. The index of the sample in its line is that of
// the lane plus i times the number of lanes. All of it is right modulo 2^64, and so are the results, which are less
// than that.
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
        ofPower[k] *= scale; // now with (index of the lane + lanes n - x)^k
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
    const double end = first + static_cast<double>(count);
    double bound = 0;
    for (int k = Degree; k >= 0; --k)
        bound = bound * end + __builtin_fabs(coefficients[k]);
    if (bound < tooFarOff)
        Correct<Stored, Degree, false>(samples, count, first, coefficients, corrected);
    else
        Correct<Stored, Degree, true>(samples, count, first, coefficients, corrected);
}

template <class Stored>
void Differences(const std::byte* stored, std::size_t count, std::int32_t* differences)
{
    const auto* const samples = As<Stored>(stored);
    for (std::size_t i = 0; i < count; ++i) {
        const auto next = static_cast<std::uint32_t>(RawOf<Stored>(std::int32_t{samples[i + 1]}));
        differences[i] =
            static_cast<std::int32_t>(next - static_cast<std::uint32_t>(RawOf<Stored>(std::int32_t{samples[i]})));
    }
}

template <class Stored>
constexpr CStoredKernels kernelsOf{
    Widen<Stored>,
    Narrow<Stored>,
    SurveyStored<Stored>,
    Sum<Stored>,
    {nullptr, MomentsInAnyOrder<Stored, 1>, MomentsInAnyOrder<Stored, 2>, nullptr, MomentsInAnyOrder<Stored, 4>},
    {nullptr, MomentsInOrder<Stored, 1>, MomentsInOrder<Stored, 2>, nullptr, MomentsInOrder<Stored, 4>},
    {SubtractPolynomial<Stored, 0>, SubtractPolynomial<Stored, 1>, SubtractPolynomial<Stored, 2>, nullptr,
     SubtractPolynomial<Stored, 4>},
    Differences<Stored>,
};

constexpr CSampleKernels kernelsOfThisSource{
    kernelsOf<std::int8_t>, kernelsOf<std::int16_t>, kernelsOf<std::int32_t>, Clamp, Survey, ToReal, ToRaw,
};

} // namespace
// NOLINTEND(misc-definitions-in-headers,cert-dcl59-cpp)

} // namespace veltaris::velflexlib::dataset
