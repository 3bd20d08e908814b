// The bodies of the loops over samples, which are compiled once for each width of vectors: each width has one source,
// whose compiler options say which instructions it may use, and which defines its set of loops from what is here.
//
// Invariant: everything in here, and in what this includes, has internal linkage and calls nothing that other sources
// could share, not even an inline function of the standard library. The linker keeps one copy of a shared function, and
// the processor may lack the instructions of the copy that it keeps.
//
// The loops hold no state and can run in any number of threads at once.
#pragma once

#include "velflexlib/dataset/samples/kernels/FitLoops.h"
#include "velflexlib/dataset/samples/kernels/SampleVectors.h"

namespace veltaris::velflexlib::dataset {

// NOLINTBEGIN(misc-definitions-in-headers,cert-dcl59-cpp): every source that includes this is to have its own
namespace {

// From stored samples to raw ones. The three loops below are simple enough for the compiler to vectorise them.
template <class Stored>
void Widen(const std::byte* stored, std::size_t count, std::int32_t* raw)
{
    const auto* const from = As<Stored>(stored);
    for (std::size_t i = 0; i < count; ++i)
        raw[i] = RawOf<Stored>(std::int32_t{from[i]});
}

// From raw samples to stored ones, rounded down to what these can hold.
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

// Always inline, so that each caller gets a loop of its own with `toRaw` expanded in it.
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

// Of samples that a caller gave, which may be beyond the raw range.
CSampleSurvey Survey(const std::int32_t* from, std::size_t count)
{
    return SurveyOf(from, count, Clamped);
}

template <class Stored>
CSampleSurvey SurveyStored(const std::byte* stored, std::size_t count)
{
    return SurveyOf(As<Stored>(stored), count, RawOf<Stored, std::int32_t>);
}

// Computes min + extent (raw - lowest) / span. The order of these steps is part of the result: CSignalScale converts
// single samples in the same order.
void ToReal(const std::int32_t* from, std::size_t count, const CSignalAxis& axis, double* to)
{
    const double min = axis.min;
    const double extent = axis.max - min;
    const CDivision overSpan(rawSpan);
    Transform(from, count, to, [&](const std::int32_t* raw) -> Doubles {
        const Doubles aboveLowest = __builtin_convertvector(Load<Ints>(raw), Doubles) - static_cast<double>(lowestRaw);
        return min + overSpan(extent * aboveLowest);
    });
}

// Computes (real - min) span / extent, cut towards raw zero. Values at or beyond an end of the axis become that end of
// the raw range, a NaN the lowest raw sample. At the minimum the steps are exactly 0 without further ado. At the
// maximum the formula may be off by a step, so the comparison with it decides. Every comparison with a NaN is false.
template <bool Rising>
void ToRawAlong(const double* from, std::size_t count, const CSignalAxis& axis, std::int32_t* to)
{
    const double min = axis.min;
    const double max = axis.max;
    const CDivision overExtent(max - min);
    Transform(from, count, to, [&](const double* real) -> Ints {
        const auto value = Load<Doubles>(real);
        Doubles steps = overExtent((value - min) * rawSpan);
        steps = steps > 0.0 ? steps : Doubles{};
        if constexpr (Rising)
            steps = value >= max ? Doubles{} + rawSpan : steps;
        else
            steps = value <= max ? Doubles{} + rawSpan : steps;
        return __builtin_convertvector(steps + static_cast<double>(lowestRaw), Ints);
    });
}

void ToRaw(const double* from, std::size_t count, const CSignalAxis& axis, std::int32_t* to)
{
    if (axis.max > axis.min)
        ToRawAlong<true>(from, count, axis, to);
    else
        ToRawAlong<false>(from, count, axis, to);
}

// Unsigned, because differences wrap.
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

// There are no loops for polynomials of degree 3, and none for moments of degree 0, which Sum() gives.
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
