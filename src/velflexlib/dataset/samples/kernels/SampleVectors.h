// Vectors of samples, as wide as the compiler options allow, for the loops over samples: see SampleLoops.h.
#pragma once

#include "velflexlib/dataset/samples/kernels/SampleKernels.h"

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

// Divides by the same number again and again. Where multiplying and adding are one instruction, which rounds once, that
// takes no division: the quotient by way of the reciprocal is off by two units in its last place at most, the first
// correction makes it one of the two nearest numbers, and the second one, whose remainder is exact, the nearest, as a
// division would. Quotients that are so small that their remainders are no normal numbers may be off by a unit. A -0
// stays one as long as the divisor is positive.
class CDivision
{
public:
    explicit CDivision(double divisor) : m_divisor(Doubles{} + divisor), m_reciprocal(1 / m_divisor) {}

    [[gnu::always_inline]] Doubles operator()(const Doubles& dividend) const
    {
#if defined(__FMA__)
        const Doubles quotient = dividend * m_reciprocal;
        return Corrected(dividend, Corrected(dividend, quotient));
#else
        return dividend / m_divisor;
#endif
    }

private:
#if defined(__FMA__)
    [[gnu::always_inline]] Doubles Corrected(const Doubles& dividend, const Doubles& quotient) const
    {
#if defined(__AVX512F__)
        const Doubles excess = _mm512_fmsub_pd(quotient, m_divisor, dividend);
        return _mm512_fnmadd_pd(excess, m_reciprocal, quotient);
#else
        const Doubles excess = _mm256_fmsub_pd(quotient, m_divisor, dividend);
        return _mm256_fnmadd_pd(excess, m_reciprocal, quotient);
#endif
    }
#endif

    Doubles m_divisor;
    [[maybe_unused]] Doubles m_reciprocal;
};

} // namespace
// NOLINTEND(misc-definitions-in-headers,cert-dcl59-cpp)

} // namespace veltaris::velflexlib::dataset
