// Which raw samples a channel has seen.
#pragma once

#include "velflexlib/dataset/samples/DataRange.h"
#include "velflexlib/dataset/samples/SampleBlock.h"
#include "velflexlib/dataset/samples/kernels/SampleKernels.h"

#include <cstdint>

namespace veltaris::velflexlib::dataset {

// The lowest and highest of all samples that were written or loaded. It never narrows.
// Loaded samples are surveyed only when somebody asks for the range, because most files are opened without that. Until
// then the range owes all samples that the block holds. Whoever changes these must tell the range first: Replace before
// some are overwritten, Settle before lines become held or are cut.
// Not thread-safe: guarded by the lock of the CDataBuffer that owns it.
class CObservedRange
{
public:
    void Clear() { *this = {}; }
    // Begins anew with samples that were just loaded.
    void OweSamples()
    {
        Clear();
        m_owesSamples = true;
    }
    bool OwesSamples() const { return m_owesSamples; }

    void Widen(std::int32_t sample) { m_range.Widen(sample); }
    void Widen(const CSampleSurvey& survey)
    {
        m_range.Widen(survey.lowest);
        m_range.Widen(survey.highest);
    }

    // Takes in samples that are about to be overwritten, if they are owed.
    void Replace(const CStoredSamples& samples)
    {
        if (m_owesSamples && samples.Count() > 0)
            Widen(samples.Kernels().survey(samples.From(0), samples.Count()));
    }
    void Replace(const CStoredSamples& line, std::uint64_t point)
    {
        if (m_owesSamples)
            Widen(line.At(point));
    }
    // Takes in what is owed, of all samples that are held, and owes nothing any more.
    const CRawRange& Settle(const CStoredSamples& all)
    {
        Replace(all);
        m_owesSamples = false;
        return m_range;
    }

private:
    CRawRange m_range;
    bool m_owesSamples = false;
};

} // namespace veltaris::velflexlib::dataset
