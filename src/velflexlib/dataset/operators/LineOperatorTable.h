// The table of line operators and how they are found. To add an operator, add its identifier to LineOpID, write its
// functions in LineOperators.h and append its row here: codes, look-ups and the parameter lists of views follow from
// it.
#pragma once

#include "velflexlib/dataset/operators/LineOperator.h"
#include "velflexlib/dataset/operators/LineOperators.h"
#include "velstdlib/util/BiMapper.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace veltaris::velflexlib::dataset {

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

// The codes of the operators. Immutable, as are the operators.
const velstdlib::util::BiMapper<LineOpID, std::int32_t>& LineOpCodes();

const CLineOperator& GetLineOperator(LineOpID id);

// Throws CNoMappingException when no operator has this code.
const CLineOperator& GetLineOperator(std::int32_t code);

} // namespace veltaris::velflexlib::dataset
