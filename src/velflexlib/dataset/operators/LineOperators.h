// The line operators and the table that lists them. To add an operator, add its identifier to LineOpID, write its
// functions here and append its row to the table: codes, look-ups and the parameter lists of views follow from that.
#pragma once

#include "velflexlib/dataset/operators/LineOperator.h"

#include <array>
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

// Identifier, display name, least number of samples, fit (null for local operators), correction and source of pixels
// of every operator, in the order of their codes. A straight line takes as many samples as a parabola does.
inline constexpr std::array lineOperators{
    CLineOperator(LineOpID::RawData, "Raw data", 0, nullptr, CLineOpRAW::Apply, PixelSource::StoredSample),
    CLineOperator(LineOpID::MeanFit, "Mean fit", 1, CLineOpAvg::Fit, CLineOpAvg::Apply, PixelSource::CorrectedChunk),
    CLineOperator(LineOpID::LineFit, "Line fit", 4, CLineOpPlain::Fit, CLineOpPlain::Apply,
                  PixelSource::CorrectedChunk),
    CLineOperator(LineOpID::DerivedData, "Derived data", 2, nullptr, CLineOpDiff::Apply, PixelSource::CorrectedChunk),
    CLineOperator(LineOpID::ParabolaFit, "Parabola fit", 4, CLineOpParable::Fit, CLineOpParable::Apply,
                  PixelSource::CorrectedChunk),
    CLineOperator(LineOpID::PolynomialFit, "Polynomial fit", 5, CLineOpPolyFit4::Fit, CLineOpPolyFit4::Apply,
                  PixelSource::CorrectedChunk),
};

inline constexpr std::size_t lineOpCount = lineOperators.size();

} // namespace veltaris::velflexlib::dataset
