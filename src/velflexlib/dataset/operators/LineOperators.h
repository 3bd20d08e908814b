// The line operators.
#pragma once

#include "velflexlib/dataset/operators/LineOperator.h"

namespace veltaris::velflexlib::dataset {

// The line as it is.
class CLineOpRAW : public CLineOperator
{
public:
    CLineOpRAW() : CLineOperator(LineOpID::RawData, 0) {}
    void Apply(const CLineFit& fit, const CStoredSamples& line, std::uint64_t first,
               std::span<std::int32_t> corrected) const override;
};

// Subtracts the mean, cut towards zero.
class CLineOpAvg : public CLineOperator
{
public:
    CLineOpAvg() : CLineOperator(LineOpID::MeanFit, 1) {}
    CLineFit Fit(const CStoredSamples& line) const override;
    void Apply(const CLineFit& fit, const CStoredSamples& line, std::uint64_t first,
               std::span<std::int32_t> corrected) const override;
};

// Subtracts the least-squares straight line; needs four samples.
class CLineOpPlain : public CLineOperator
{
public:
    CLineOpPlain() : CLineOperator(LineOpID::LineFit, 4) {}
    CLineFit Fit(const CStoredSamples& line) const override;
    void Apply(const CLineFit& fit, const CStoredSamples& line, std::uint64_t first,
               std::span<std::int32_t> corrected) const override;
};

// Differences of neighbours in wrapping 32-bit arithmetic, the last one twice; needs two samples.
class CLineOpDiff : public CLineOperator
{
public:
    CLineOpDiff() : CLineOperator(LineOpID::DerivedData, 2) {}
    void Apply(const CLineFit& fit, const CStoredSamples& line, std::uint64_t first,
               std::span<std::int32_t> corrected) const override;
};

// Subtracts the least-squares parabola; needs four samples.
class CLineOpParable : public CLineOperator
{
public:
    CLineOpParable() : CLineOperator(LineOpID::ParabolaFit, 4) {}
    CLineFit Fit(const CStoredSamples& line) const override;
    void Apply(const CLineFit& fit, const CStoredSamples& line, std::uint64_t first,
               std::span<std::int32_t> corrected) const override;
};

// Subtracts the least-squares polynomial of degree 4, whose constant and linear coefficients are cut to integers;
// needs five samples.
class CLineOpPolyFit4 : public CLineOperator
{
public:
    CLineOpPolyFit4() : CLineOperator(LineOpID::PolynomialFit, 5) {}
    CLineFit Fit(const CStoredSamples& line) const override;
    void Apply(const CLineFit& fit, const CStoredSamples& line, std::uint64_t first,
               std::span<std::int32_t> corrected) const override;
};

} // namespace veltaris::velflexlib::dataset
