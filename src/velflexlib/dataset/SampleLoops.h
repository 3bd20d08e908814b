// The bodies of the loops over samples, to be compiled once for each width of vectors: for one source each, whose
// compiler options say which instructions there are. Everything here is that source's own. It may call nothing that
// other sources could share, not even an inline function of the standard library: the linker keeps one copy of those,
// and the processor may lack the instructions of the one that it keeps.
#pragma once

#include "velflexlib/dataset/SampleKernels.h"

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

using Ints [[gnu::vector_size(lanes * sizeof(std::int32_t))]] = std::int32_t;
using Doubles [[gnu::vector_size(lanes * sizeof(double))]] = double;

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

// Towards the top of a wider type, or, when negative, down to the width of a narrower one.
template <int Bits>
constexpr std::int32_t Shifted(std::int32_t value)
{
    if constexpr (Bits >= 0)
        return value << Bits;
    else
        return value >> -Bits;
}

template <int Bits, class From, class To>
void Shift(const From* from, std::size_t count, To* to)
{
    for (std::size_t i = 0; i < count; ++i)
        to[i] = static_cast<To>(Shifted<Bits>(from[i]));
}

void Clamp(const std::int32_t* from, std::size_t count, std::int32_t* to)
{
    for (std::size_t i = 0; i < count; ++i)
        to[i] = Clamped(from[i]);
}

CSampleSurvey Survey(const std::int32_t* from, std::size_t count)
{
    CSampleSurvey survey{highestRaw, lowestRaw, 0};
    for (std::size_t i = 0; i < count; ++i) {
        const std::int32_t sample = Clamped(from[i]);
        survey.lowest = sample < survey.lowest ? sample : survey.lowest;
        survey.highest = sample > survey.highest ? sample : survey.highest;
        survey.bits |= sample;
    }
    return survey;
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

std::int64_t Sum(const std::int32_t* samples, std::size_t count)
{
    std::int64_t sum = 0;
    for (std::size_t i = 0; i < count; ++i)
        sum += samples[i];
    return sum;
}

template <int Degree>
struct CMomentsOfLanes
{
    Doubles moments[Degree + 1] = {};

    [[gnu::always_inline]] void Add(const std::int32_t* samples, const Doubles& x)
    {
        Doubles term = __builtin_convertvector(Load<Ints>(samples), Doubles);
        moments[0] += term;
        for (int k = 1; k <= Degree; ++k) {
            term *= x;
            moments[k] += term;
        }
    }
};

// Two sums in turn, so that one addition need not wait for the one before.
template <int Degree>
void AddMoments(const std::int32_t* samples, std::size_t count, double first, double* moments)
{
    CMomentsOfLanes<Degree> even;
    CMomentsOfLanes<Degree> odd;
    Doubles x = Ascending() + first;
    std::size_t i = 0;
    for (; i + 2 * lanes <= count; i += 2 * lanes) {
        even.Add(samples + i, x);
        odd.Add(samples + i + lanes, x + static_cast<double>(lanes));
        x += static_cast<double>(2 * lanes);
    }
    ForEachVector(samples + i, count - i, [&](const std::int32_t* piece) {
        even.Add(piece, x);
        x += static_cast<double>(lanes);
    });
    for (int k = 0; k <= Degree; ++k) {
        const Doubles both = even.moments[k] + odd.moments[k];
        for (std::size_t lane = 0; lane < lanes; ++lane)
            moments[k] += both[lane];
    }
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

// Twice the raw range: subtracting more than that gives the same results.
constexpr double farOff = 0x1p30;

template <int Degree, bool ReachesFarOff>
void Correct(std::int32_t* samples, std::size_t count, double first, const double* coefficients)
{
    double c[Degree + 1];
    __builtin_memcpy(c, coefficients, sizeof c);
    Doubles x = Ascending() + first;
    Transform(samples, count, samples, [&](const std::int32_t* piece) -> Ints {
        Doubles fitted = Polynomial<Degree>(c, x);
        x += static_cast<double>(lanes);
        if constexpr (ReachesFarOff) {
            fitted = fitted < farOff ? fitted : Doubles{} + farOff;
            fitted = fitted > -farOff ? fitted : Doubles{} - farOff;
        }
        const auto sample = Load<Ints>(piece);
        Ints result = sample - __builtin_convertvector(fitted, Ints); // cut towards zero
        result = result < lowestRaw ? Ints{} + lowestRaw : result;
        result = result > highestRaw ? Ints{} + highestRaw : result;
        const Ints isMarker = (sample <= lowestRaw) | (sample >= highestRaw);
        return isMarker ? sample : result;
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

template <int Degree>
void SubtractPolynomial(std::int32_t* samples, std::size_t count, double first, const double* coefficients)
{
    if (count == 1) {
        *samples = CorrectedSample<Degree>(*samples, first, coefficients);
        return;
    }
    const double end = first + static_cast<double>(count);
    double bound = 0;
    for (int k = Degree; k >= 0; --k)
        bound = bound * end + __builtin_fabs(coefficients[k]);
    if (bound < farOff / 2)
        Correct<Degree, false>(samples, count, first, coefficients);
    else
        Correct<Degree, true>(samples, count, first, coefficients);
}

void Differences(std::int32_t* samples, std::size_t count)
{
    for (std::size_t i = 0; i < count; ++i) {
        const auto next = static_cast<std::uint32_t>(samples[i + 1]);
        samples[i] = static_cast<std::int32_t>(next - static_cast<std::uint32_t>(samples[i]));
    }
}

constexpr CSampleKernels kernelsOfThisSource{
    Shift<22, std::int8_t, std::int32_t>,
    Shift<14, std::int16_t, std::int32_t>,
    Shift<-2, std::int32_t, std::int32_t>,
    Shift<-22, std::int32_t, std::int8_t>,
    Shift<-14, std::int32_t, std::int16_t>,
    Shift<2, std::int32_t, std::int32_t>,
    Clamp,
    Survey,
    ToReal,
    ToRaw,
    Sum,
    AddMoments<1>,
    AddMoments<2>,
    AddMoments<4>,
    SubtractPolynomial<0>,
    SubtractPolynomial<1>,
    SubtractPolynomial<2>,
    SubtractPolynomial<4>,
    Differences,
};

} // namespace
// NOLINTEND(misc-definitions-in-headers,cert-dcl59-cpp)

} // namespace veltaris::velflexlib::dataset
