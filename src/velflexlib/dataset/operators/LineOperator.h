// Corrections of one line of raw samples.
#pragma once

#include "velflexlib/dataset/samples/SampleBlock.h"
#include "velstdlib/util/BiMapper.h"

#include <array>
#include <cstdint>
#include <span>
#include <string_view>

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

// What an operator must know of a whole line to correct any part of it: what to subtract, as a polynomial in the index
// of a sample, by ascending power.
using CLineFit = std::array<double, 5>;

// Holds no state. The fits take the index of a sample as x, count every sample, and subtract the fitted value, cut
// towards zero; the two ends of the raw range are markers that they pass through, and their results are clamped to the
// raw range.
class CLineOperator
{
public:
    CLineOperator(const CLineOperator&) = delete;
    CLineOperator& operator=(const CLineOperator&) = delete;
    virtual ~CLineOperator() = default;

    LineOpID GetID() const { return m_id; }

    // A line of fewer samples gives no corrected one; any other gives one of its length.
    std::uint64_t GetLeastSamples() const { return m_leastSamples; }

    // Whether it needs no fit: a corrected sample depends on the one or two next to it.
    bool IsLocal() const { return m_id == LineOpID::RawData || m_id == LineOpID::DerivedData; }

    // Both are for lines of at least so many samples.
    virtual CLineFit Fit(const CStoredSamples& /*line*/) const { return {}; }
    // The corrected samples from index `first` on, of which there must be as many.
    virtual void Apply(const CLineFit& fit, const CStoredSamples& line, std::uint64_t first,
                       std::span<std::int32_t> corrected) const = 0;

protected:
    CLineOperator(LineOpID id, std::uint64_t leastSamples) : m_id(id), m_leastSamples(leastSamples) {}

private:
    LineOpID m_id;
    std::uint64_t m_leastSamples;
};

// The codes that stand for the operators in files and in the interface.
const velstdlib::util::BiMapper<LineOpID, std::int32_t>& LineOpCodes();

std::string_view GetDisplayName(LineOpID id);

const CLineOperator& GetLineOperator(LineOpID id);

// Throws CNoMappingException for a code that is no operator's.
const CLineOperator& GetLineOperator(std::int32_t code);

} // namespace veltaris::velflexlib::dataset
