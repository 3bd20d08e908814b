// The functions of the line operators: how each fits a line, and how it corrects it.
#pragma once

#include "velflexlib/dataset/operators/LineOperator.h"

#include <cstddef>

namespace veltaris::velflexlib::dataset {

// The classes below only group the functions of an operator: they hold no state, and any thread can call them.

// Leaves the line as it is.
struct CLineOpRAW
{
    static void Apply(const CLineFit& fit, const CStoredSamples& line, std::uint64_t first,
                      std::span<std::int32_t> corrected);
};

// Replaces each sample by the difference between the next sample and this one, in wrapping 32-bit arithmetic and
// without regard to markers. The last sample, which has no next one, gets the same difference as the one before it.
struct CLineOpDiff
{
    static void Apply(const CLineFit& fit, const CStoredSamples& line, std::uint64_t first,
                      std::span<std::int32_t> corrected);
};

// Subtracts a polynomial of this degree. What derives from it adds how the polynomial is fitted to a line.
template <std::size_t Degree>
struct CLineOpSubtraction
{
    static void Apply(const CLineFit& fit, const CStoredSamples& line, std::uint64_t first,
                      std::span<std::int32_t> corrected);
};

extern template struct CLineOpSubtraction<0>;
extern template struct CLineOpSubtraction<1>;
extern template struct CLineOpSubtraction<2>;
extern template struct CLineOpSubtraction<4>;

// Subtracts the mean, which is cut towards zero.
struct CLineOpAvg : CLineOpSubtraction<0>
{
    static CLineFit Fit(const CStoredSamples& line);
};

// Subtracts the least-squares straight line.
struct CLineOpPlain : CLineOpSubtraction<1>
{
    static CLineFit Fit(const CStoredSamples& line);
};

// Subtracts the least-squares parabola.
struct CLineOpParable : CLineOpSubtraction<2>
{
    static CLineFit Fit(const CStoredSamples& line);
};

// Subtracts the least-squares polynomial of degree 4, whose constant and linear coefficients are cut towards zero.
struct CLineOpPolyFit4 : CLineOpSubtraction<4>
{
    static CLineFit Fit(const CStoredSamples& line);
};

} // namespace veltaris::velflexlib::dataset
