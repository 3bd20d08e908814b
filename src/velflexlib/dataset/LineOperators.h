// The line operators.
#pragma once

#include "velflexlib/dataset/LineOperator.h"

namespace veltaris::velflexlib::dataset {

// The line as it is.
class CLineOpRAW : public CLineOperator
{
public:
    LineOpID GetID() const override { return LineOpID::RawData; }
    void Apply(std::vector<std::int32_t>& output, std::span<const std::int32_t> input) const override;
};

// Subtracts the mean, cut towards zero.
class CLineOpAvg : public CLineOperator
{
public:
    LineOpID GetID() const override { return LineOpID::MeanFit; }
    void Apply(std::vector<std::int32_t>& output, std::span<const std::int32_t> input) const override;
};

// Subtracts the least-squares straight line; needs four samples.
class CLineOpPlain : public CLineOperator
{
public:
    LineOpID GetID() const override { return LineOpID::LineFit; }
    void Apply(std::vector<std::int32_t>& output, std::span<const std::int32_t> input) const override;
};

// Differences of neighbours in wrapping 32-bit arithmetic, the last one twice; needs two samples.
class CLineOpDiff : public CLineOperator
{
public:
    LineOpID GetID() const override { return LineOpID::DerivedData; }
    void Apply(std::vector<std::int32_t>& output, std::span<const std::int32_t> input) const override;
};

// Subtracts the least-squares parabola; needs four samples.
class CLineOpParable : public CLineOperator
{
public:
    LineOpID GetID() const override { return LineOpID::ParabolaFit; }
    void Apply(std::vector<std::int32_t>& output, std::span<const std::int32_t> input) const override;
};

// Subtracts the least-squares polynomial of degree 4, whose constant and linear coefficients are cut to integers;
// needs five samples.
class CLineOpPolyFit4 : public CLineOperator
{
public:
    LineOpID GetID() const override { return LineOpID::PolynomialFit; }
    void Apply(std::vector<std::int32_t>& output, std::span<const std::int32_t> input) const override;
};

} // namespace veltaris::velflexlib::dataset
