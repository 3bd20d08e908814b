// Corrections of one line of raw samples.
#pragma once

#include "velstdlib/util/BiMapper.h"

#include <cstdint>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

namespace veltaris::velflexlib::dataset {

enum class LineOpID
{
    RawData = 0,
    MeanFit = 1,
    LineFit = 2,
    DerivedData = 3,
    ParabolaFit = 4,
    PolynomialFit = 5,
};

// Holds no state. The fits take the index of a sample as x, count every sample, and subtract the fitted value, cut
// towards zero; the two ends of the raw range and what lies beyond are markers that they pass through, and their
// results are clamped to the raw range.
class CLineOperator
{
public:
    CLineOperator() = default;
    CLineOperator(const CLineOperator&) = delete;
    CLineOperator& operator=(const CLineOperator&) = delete;
    virtual ~CLineOperator() = default;

    virtual LineOpID GetID() const = 0;

    // Replaces `output` by the corrected line: as long as `input`, or empty when the operator needs more samples.
    virtual void Apply(std::vector<std::int32_t>& output, std::span<const std::int32_t> input) const = 0;
};

// The codes that stand for the operators in files and in the interface.
const velstdlib::util::BiMapper<LineOpID, std::int32_t>& LineOpCodes();

// Throws CNoMappingException for a code that is no operator's.
LineOpID LineOpFromCode(std::int32_t code);

std::string_view GetDisplayName(LineOpID id);

std::unique_ptr<CLineOperator> CreateLineOperator(LineOpID id);

} // namespace veltaris::velflexlib::dataset
