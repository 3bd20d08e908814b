// Medians of eight numbers, or of fewer with infinities in place of the others. See CurveLoops.h for how these sources
// are compiled; what it says of state and threads holds here, too.
#pragma once

#include "curves/kernels/Eights.h"

namespace veltaris::curves {

// NOLINTBEGIN(misc-definitions-in-headers,cert-dcl59-cpp): every source that includes this is to have its own
namespace {

double Lower(double a, double b)
{
    return a < b ? a : b;
}

double Higher(double a, double b)
{
    return b < a ? a : b;
}

double Mean(double a, double b)
{
    return 0.5 * (a + b);
}

CEight Mean(const CEight& a, const CEight& b)
{
    return All(0.5) * (a + b);
}

// Two numbers that are sorted side by side.
struct CPair
{
    using Vector [[gnu::vector_size(2 * sizeof(double))]] = double;
    Vector both;
};

CPair Lower(const CPair& a, const CPair& b)
{
    return {a.both < b.both ? a.both : b.both};
}

CPair Higher(const CPair& a, const CPair& b)
{
    return {b.both < a.both ? a.both : b.both};
}

CPair Mean(const CPair& a, const CPair& b)
{
    return {0.5 * (a.both + b.both)};
}

// The comparisons of a merge sort of eight (Batcher, Sorting networks and their applications, 1968).
struct CExchange
{
    int low, high;
};
constexpr CExchange exchanges[] = {{0, 1}, {2, 3}, {4, 5}, {6, 7}, {0, 2}, {1, 3}, {4, 6}, {5, 7}, {1, 2}, {5, 6},
                                   {0, 4}, {1, 5}, {2, 6}, {3, 7}, {2, 4}, {3, 5}, {1, 2}, {3, 4}, {5, 6}};

// Sorts eight rows, without a branch that depends on numbers: column by column if a row has several.
template <class Row>
[[gnu::always_inline]] inline void Sort(Row (&rows)[eight])
{
#pragma GCC unroll 19
    for (const CExchange& exchange : exchanges) {
        const Row low = Lower(rows[exchange.low], rows[exchange.high]);
        rows[exchange.high] = Higher(rows[exchange.low], rows[exchange.high]);
        rows[exchange.low] = low;
    }
}

// The median of the lowest `count` of eight rows, of which there is at least one. Where the count is known to the
// compiler, it leaves out what the sort does for other rows.
template <class Row>
[[gnu::always_inline]] inline Row Median(Row (&rows)[eight], int count)
{
    Sort(rows);
    return Mean(rows[(count - 1) / 2], rows[count / 2]);
}

[[gnu::always_inline]] inline double Median(const CEight& numbers, int count)
{
    double rows[eight];
    StoreEight(numbers, rows);
    return Median(rows, count);
}

} // namespace
// NOLINTEND(misc-definitions-in-headers,cert-dcl59-cpp)

} // namespace veltaris::curves
