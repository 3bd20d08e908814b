// The fit of the line that was last read through a line operator.
#pragma once

#include "velflexlib/dataset/operators/LineOperator.h"
#include "velflexlib/dataset/samples/SampleBlock.h"

#include <cstdint>

namespace veltaris::velflexlib::dataset {

// Pixels are read along a line, and each one needs the fit of the whole line: so one fit is kept.
// Invariant: it is the fit of the line's current samples. Whoever changes any samples, or how many of them are valid,
// calls Forget. Not thread-safe: guarded by the lock of the CDataBuffer that owns it.
class CLatestFit
{
public:
    void Forget() { m_operator = nullptr; }

    // What the operator fits to the valid samples of that line.
    const CLineFit& Of(std::uint64_t line, const CStoredSamples& samples, const CLineOperator& lineOperator)
    {
        static constexpr CLineFit none{};
        if (lineOperator.IsLocal())
            return none;
        if (m_operator != &lineOperator || m_line != line) {
            m_fit = lineOperator.Fit(samples);
            m_line = line;
            m_operator = &lineOperator;
        }
        return m_fit;
    }

private:
    std::uint64_t m_line = 0;
    const CLineOperator* m_operator = nullptr; // null: no fit is kept
    CLineFit m_fit{};
};

} // namespace veltaris::velflexlib::dataset
