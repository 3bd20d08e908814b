// The line operators.
#pragma once

#include "velflexlib/dataset/LineOperator.h"

namespace veltaris::velflexlib::dataset {

// The line as it is.
class CLineOpRAW : public CLineOperator
{
public:
    LineOpID GetID() const override { return LineOpID::RawData; }
    std::uint64_t GetLeastSamples() const override { return 0; }
    bool IsLocal() const override { return true; }
    void Apply(const CLineFit& fit, const CStoredSamples& line, std::uint64_t first,
               std::span<std::int32_t> corrected) const override;
};

// Subtracts the mean, cut towards zero.
class CLineOpAvg : public CLineOperator
{
public:
    LineOpID GetID() const override { return LineOpID::MeanFit; }
    std::uint64_t GetLeastSamples() const override { return 1; }
    CLineFit Fit(const CStoredSamples& line) const override;
    void Apply(const CLineFit& fit, const CStoredSamples& line, std::uint64_t first,
               std::span<std::int32_t> corrected) const override;
};

// Subtracts the least-squares straight line; needs four samples.
class CLineOpPlain : public CLineOperator
{
public:
    LineOpID GetID() const override { return LineOpID::LineFit; }
    std::uint64_t GetLeastSamples() const override { return 4; }
    CLineFit Fit(const CStoredSamples& line) const override;
    void Apply(const CLineFit& fit, const CStoredSamples& line, std::uint64_t first,
               std::span<std::int32_t> corrected) const override;
};

// Differences of neighbours in wrapping 32-bit arithmetic, the last one twice; needs two samples.
class CLineOpDiff : public CLineOperator
{
public:
    LineOpID GetID() const override { return LineOpID::DerivedData; }
    std::uint64_t GetLeastSamples() const override { return 2; }
    bool IsLocal() const override { return true; }
    void Apply(const CLineFit& fit, const CStoredSamples& line, std::uint64_t first,
               std::span<std::int32_t> corrected) const override;
};

// Subtracts the least-squares parabola; needs four samples.
class CLineOpParable : public CLineOperator
{
public:
    LineOpID GetID() const override { return LineOpID::ParabolaFit; }
    std::uint64_t GetLeastSamples() const override { return 4; }
    CLineFit Fit(const CStoredSamples& line) const override;
    void Apply(const CLineFit& fit, const CStoredSamples& line, std::uint64_t first,
               std::span<std::int32_t> corrected) const override;
};

// Subtracts the least-squares polynomial of degree 4, whose constant and linear coefficients are cut to integers;
// needs five samples.
class CLineOpPolyFit4 : public CLineOperator
{
public:
    LineOpID GetID() const override { return LineOpID::PolynomialFit; }
    std::uint64_t GetLeastSamples() const override { return 5; }
    CLineFit Fit(const CStoredSamples& line) const override;
    void Apply(const CLineFit& fit, const CStoredSamples& line, std::uint64_t first,
               std::span<std::int32_t> corrected) const override;
};

} // namespace veltaris::velflexlib::dataset
