// Eight numbers at a time, in as many vectors as the instructions of the including source take for them. See
// CurveLoops.h for how these sources are compiled, and why nothing in here may be shared between them.
//
// Invariant: operations work on each of the eight numbers alone, and Sum() adds them in one order, so that results do
// not depend on the width of a vector. Nothing here holds state between calls: any number of threads can use it.
#pragma once

#include <cstddef>
#include <cstdint>

#if defined(__SSE2__)
#include <immintrin.h>
#endif

namespace veltaris::curves {

// NOLINTBEGIN(misc-definitions-in-headers,cert-dcl59-cpp): every source that includes this is to have its own
namespace {

#if defined(__AVX512F__)
constexpr int lanes = 8;
#elif defined(__AVX2__)
constexpr int lanes = 4;
#else
constexpr int lanes = 2;
#endif

constexpr int eight = 8;
constexpr int parts = eight / lanes;

using Doubles [[gnu::vector_size(lanes * sizeof(double))]] = double;
using Longs [[gnu::vector_size(lanes * sizeof(std::int64_t))]] = std::int64_t;

constexpr double infinity = __builtin_inf();
constexpr double nan = __builtin_nan("");

// The parts are written out wherever they are used: of arrays that loops run over, compilers keep none in registers.
struct CEight
{
    Doubles part[parts];
};

// Whether something holds for each of eight numbers.
struct CMask
{
    Longs part[parts];
};

// Makes the parts by a function of the index of their first element.
template <class To, class Function>
[[gnu::always_inline]] inline To Make(Function function)
{
    if constexpr (parts == 1)
        return {{function(0)}};
    else if constexpr (parts == 2)
        return {{function(0), function(4)}};
    else
        return {{function(0), function(2), function(4), function(6)}};
}

// Applies a function to each part of the operands.
template <class To, class Function, class... From>
[[gnu::always_inline]] inline To Each(Function function, const From&... from)
{
    return Make<To>([&](int first) { return function(from.part[first / lanes]...); });
}

// Eight times the same number.
[[gnu::always_inline]] inline CEight All(double value)
{
    return Make<CEight>([=](int) { return Doubles{} + value; });
}

template <class Part>
[[gnu::always_inline]] inline Part GatherPart(const double* from, std::size_t stride)
{
    const auto at = [=](std::size_t i) { return from[i * stride]; };
    if constexpr (lanes == 8)
        return Part{at(0), at(1), at(2), at(3), at(4), at(5), at(6), at(7)};
    else if constexpr (lanes == 4)
        return Part{at(0), at(1), at(2), at(3)};
    else
        return Part{at(0), at(1)};
}

// The numbers at `from`, from + stride, ...
[[gnu::always_inline]] inline CEight Gather(const double* from, std::size_t stride)
{
    return Make<CEight>(
        [=](int first) { return GatherPart<Doubles>(from + static_cast<std::size_t>(first) * stride, stride); });
}

// Two eights of numbers: those at `from`, from + stride, ..., and the ones behind each of these. Twice Gather() takes
// nearly twice as long.
struct CTwoEights
{
    CEight first, second;
};

// The pairs of numbers at `from`, from + 2 stride, ...
template <class Part>
[[gnu::always_inline]] inline Part LoadPairs(const double* from, std::size_t stride)
{
    using Pair [[gnu::vector_size(2 * sizeof(double))]] = double;
    const auto at = [=](std::size_t i) {
        Pair pair;
        __builtin_memcpy(&pair, from + 2 * i * stride, sizeof pair);
        return pair;
    };
    if constexpr (lanes == 2)
        return at(0);
    else if constexpr (lanes == 4)
        return __builtin_shufflevector(at(0), at(1), 0, 1, 2, 3);
    else
        return __builtin_shufflevector(__builtin_shufflevector(at(0), at(1), 0, 1, 2, 3),
                                       __builtin_shufflevector(at(2), at(3), 0, 1, 2, 3), 0, 1, 2, 3, 4, 5, 6, 7);
}

// Every other number of two vectors in turns, from number `from` on, which is 0 or 1.
template <int from, class Part>
[[gnu::always_inline]] inline Part Alternate(const Part& a, const Part& b)
{
    if constexpr (lanes == 2)
        return __builtin_shufflevector(a, b, from, from + 2);
    else if constexpr (lanes == 4)
        return __builtin_shufflevector(a, b, from, from + 4, from + 2, from + 6);
    else
        return __builtin_shufflevector(a, b, from, from + 8, from + 2, from + 10, from + 4, from + 12, from + 6,
                                       from + 14);
}

// The even rows with the odd ones, number `from` of each pair.
template <int from>
[[gnu::always_inline]] inline CEight AlternateRows(const double* numbers, std::size_t stride)
{
    return Make<CEight>([=](int first) {
        const double* const rows = numbers + static_cast<std::size_t>(first) * stride;
        return Alternate<from>(LoadPairs<Doubles>(rows, stride), LoadPairs<Doubles>(rows + stride, stride));
    });
}

[[gnu::always_inline]] inline CTwoEights GatherTwo(const double* from, std::size_t stride)
{
    return {AlternateRows<0>(from, stride), AlternateRows<1>(from, stride)};
}

[[gnu::always_inline]] inline CEight LoadEight(const double* from)
{
    return Make<CEight>([=](int first) {
        Doubles part;
        __builtin_memcpy(&part, from + first, sizeof part);
        return part;
    });
}

[[gnu::always_inline]] inline void StoreEight(const CEight& numbers, double* to)
{
    __builtin_memcpy(to, &numbers, sizeof numbers);
}

// The names of the operators' parameters.
using D = const Doubles&;
using L = const Longs&;
using Eight = const CEight&;

[[gnu::always_inline]] inline CEight operator+(Eight a, Eight b)
{
    return Each<CEight>([](D x, D y) { return x + y; }, a, b);
}
[[gnu::always_inline]] inline CEight operator-(Eight a, Eight b)
{
    return Each<CEight>([](D x, D y) { return x - y; }, a, b);
}
[[gnu::always_inline]] inline CEight operator*(Eight a, Eight b)
{
    return Each<CEight>([](D x, D y) { return x * y; }, a, b);
}
[[gnu::always_inline]] inline CEight operator/(Eight a, Eight b)
{
    return Each<CEight>([](D x, D y) { return x / y; }, a, b);
}
[[gnu::always_inline]] inline CMask operator<=(Eight a, Eight b)
{
    return Each<CMask>([](D x, D y) -> Longs { return x <= y; }, a, b);
}
[[gnu::always_inline]] inline CMask operator<(Eight a, Eight b)
{
    return Each<CMask>([](D x, D y) -> Longs { return x < y; }, a, b);
}
[[gnu::always_inline]] inline CMask operator&(const CMask& a, const CMask& b)
{
    return Each<CMask>([](L x, L y) { return x & y; }, a, b);
}

[[gnu::always_inline]] inline CMask operator|(const CMask& a, const CMask& b)
{
    return Each<CMask>([](L x, L y) { return x | y; }, a, b);
}

// `a` where the mask holds, else `b`.
[[gnu::always_inline]] inline CEight Choose(const CMask& mask, Eight a, Eight b)
{
    return Each<CEight>([](L m, D x, D y) -> Doubles { return m ? x : y; }, mask, a, b);
}

// A NaN loses against any number that is the second operand.
[[gnu::always_inline]] inline CEight Lower(Eight a, Eight b)
{
    return Choose(a < b, a, b);
}
[[gnu::always_inline]] inline CEight Higher(Eight a, Eight b)
{
    return Choose(b < a, a, b);
}

// A bit for each of the numbers of a part, the first one the lowest.
template <class Part>
[[gnu::always_inline]] inline unsigned PartBits(const Part& part)
{
#if defined(__AVX512F__)
    return _mm512_movepi64_mask(reinterpret_cast<__m512i>(part));
#elif defined(__AVX2__)
    return static_cast<unsigned>(_mm256_movemask_pd(reinterpret_cast<__m256d>(part)));
#elif defined(__SSE2__)
    return static_cast<unsigned>(_mm_movemask_pd(reinterpret_cast<__m128d>(part)));
#else
    return (part[0] != 0 ? 1U : 0U) | (part[1] != 0 ? 2U : 0U);
#endif
}

// A bit for each of the eight, the first one the lowest.
template <class Mask>
[[gnu::always_inline]] inline unsigned Bits(const Mask& mask)
{
    if constexpr (parts == 1)
        return PartBits(mask.part[0]);
    else if constexpr (parts == 2)
        return PartBits(mask.part[0]) | PartBits(mask.part[1]) << 4U;
    else
        return PartBits(mask.part[0]) | PartBits(mask.part[1]) << 2U | PartBits(mask.part[2]) << 4U |
               PartBits(mask.part[3]) << 6U;
}

[[gnu::always_inline]] inline double Sum(Eight numbers)
{
    double a[eight];
    StoreEight(numbers, a);
    return ((a[0] + a[1]) + (a[2] + a[3])) + ((a[4] + a[5]) + (a[6] + a[7]));
}

// 0 1 2 3 4 5 6 7
[[gnu::always_inline]] inline CEight Ascending()
{
    constexpr double numbers[eight] = {0, 1, 2, 3, 4, 5, 6, 7};
    return LoadEight(numbers);
}

// The next numbers of a stretch, of which `count` are left; behind the last one, NaN.
[[gnu::always_inline]] inline CEight LoadPart(const double* from, std::size_t count)
{
    double numbers[eight] = {nan, nan, nan, nan, nan, nan, nan, nan};
    __builtin_memcpy(numbers, from, count * sizeof(double));
    return LoadEight(numbers);
}

// Stores the last eight of `count` numbers, or as many as there are.
[[gnu::always_inline]] inline void StoreLast(const CEight& numbers, double* to, std::size_t count)
{
    if (count >= eight) {
        StoreEight(numbers, to + count - eight);
        return;
    }
    double all[eight];
    StoreEight(numbers, all);
    __builtin_memcpy(to, all, count * sizeof(double));
}

} // namespace
// NOLINTEND(misc-definitions-in-headers,cert-dcl59-cpp)

} // namespace veltaris::curves
