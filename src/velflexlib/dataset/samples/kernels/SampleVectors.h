// Vectors of samples and of numbers, as wide as the compiler options of the including source allow, and the steps that
// the loops over samples are made of. See SampleLoops.h for why nothing here may be shared between sources.
//
// Invariants: every vector has the same number of elements, `lanes`, whatever its element type, so that a vector of
// samples, one of their indices and one of their corrected values go together. No step reads or writes beyond the
// elements it was given: the last, incomplete vector of a line passes through a buffer that is filled up with zeros.
// Nothing here holds state between calls, so that any number of threads can run these loops at once.
#pragma once

#include "velflexlib/dataset/samples/kernels/RawRange.h"
#include "velflexlib/dataset/samples/kernels/SampleKernels.h"

#if defined(__AVX2__)
#include <immintrin.h>
#endif

namespace veltaris::velflexlib::dataset {

// NOLINTBEGIN(misc-definitions-in-headers,cert-dcl59-cpp): every source that includes this is to have its own
namespace {

// The number of elements of a vector.
#if defined(__AVX512F__)
constexpr std::size_t lanes = 8;
#elif defined(__AVX2__)
constexpr std::size_t lanes = 4;
#else
constexpr std::size_t lanes = 2;
#endif

// The elements of a vector fill a register of the widest instructions when they are doubles.
template <class Element>
struct CVectorOf
{
    using Type [[gnu::vector_size(lanes * sizeof(Element))]] = Element;
};

template <class Element>
using VectorOf = typename CVectorOf<Element>::Type;

using Ints = VectorOf<std::int32_t>;
using Longs = VectorOf<std::uint64_t>; // unsigned, because they are meant to wrap
using Doubles = VectorOf<double>;

// Vectors are copied from and to memory of any alignment: samples are only aligned to their own size.
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

// The numbers 0, 1, 2, ... that the samples of a line's first vector have as indices.
Doubles Ascending()
{
    Doubles ascending;
    for (std::size_t lane = 0; lane < lanes; ++lane)
        ascending[lane] = static_cast<double>(lane);
    return ascending;
}

// Calls step(const From*) for every vector of the elements. The last one is filled up with zeros, so `step` must be
// such that zeros do no harm, as they do none in sums.
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

// Stores step(const From*) for every vector of the elements. What `step` makes of the zeros that fill up the last one
// is dropped.
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

// The nearest sample within the raw range.
constexpr std::int32_t Clamped(std::int32_t sample)
{
    return sample < lowestRaw ? lowestRaw : sample > highestRaw ? highestRaw : sample;
}

// The raw value of a stored sample, or of a vector of stored samples, that was widened to 32 bits: the highest bits of
// the two are the same.
template <class Stored, class Value>
constexpr Value RawOf(Value value)
{
    if constexpr (spareBits < Stored >> 0)
        return value >> spareBits<Stored>;
    else
        return value << -spareBits<Stored>;
}

// The factor from the number that a stored sample is to its raw value: a power of two, so multiplying is exact.
template <class Stored>
constexpr double rawPerStored = static_cast<double>(1LL << rawBits) / (1LL << (8 * sizeof(Stored)));

// The stored sample for a raw one, rounded down where bits are lost.
template <class Stored>
constexpr Stored StoredOf(std::int32_t raw)
{
    if constexpr (spareBits < Stored >> 0)
        return raw << spareBits<Stored>;
    else
        return static_cast<Stored>(raw >> -spareBits<Stored>);
}

// The next `lanes` stored samples, as they are stored, but with elements of another type.
template <class To, class Stored>
To LoadAs(const Stored* stored)
{
    return __builtin_convertvector(Load<VectorOf<Stored>>(stored), To);
}

// There is one instruction for each of these, which the compiler does not find by itself.
#if defined(__AVX512F__)
constexpr __mmask8 everyLane = 0xFF; // without a mask GCC 12 warns of its own header
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

// The raw values of the next `lanes` stored samples.
template <class Stored>
Ints LoadRaw(const Stored* stored)
{
    return RawOf<Stored>(LoadAs<Ints>(stored));
}

// The address of stored samples as that of their type. It must be a multiple of their size.
template <class Stored>
const Stored* As(const std::byte* bytes)
{
    return reinterpret_cast<const Stored*>(bytes);
}

// Divides many numbers by the same one, with the very results of a division. Where the processor multiplies and adds in
// one instruction that rounds once, this takes no division: the dividend times the reciprocal is off by at most two
// units in the last place, the first correction makes that one of the two doubles nearest to the quotient, and the
// second, whose remainder is exact, the nearest. Two things differ from a division: a quotient so small that its
// remainder is not a normal number may be off by one unit, and a quotient of -0 keeps its sign only if the divisor is
// positive. CSignalScale excludes axes where that could show.
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
    // The quotient minus its error, as far as the reciprocal tells that error.
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
