// The values that a caller writes a line with, as raw samples.
#pragma once

#include "velflexlib/dataset/samples/DataRange.h"
#include "velflexlib/dataset/samples/SampleCodec.h"
#include "velflexlib/dataset/samples/SignalScale.h"
#include "velflexlib/dataset/samples/kernels/SampleKernels.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <span>

namespace veltaris::velflexlib::dataset {

// A chunk of raw samples that is being worked on.
using SampleChunk = std::array<std::int32_t, samplesPerPiece>;

// Both kinds of values survey all of the samples that they stand for, and hand them out chunk by chunk. They only look
// at the caller's memory, and may be used by any thread as long as nobody writes there.

// Raw values, to be clamped to the raw range.
struct CRawValues
{
    std::span<const std::int32_t> values;

    CSampleSurvey Survey() const { return Kernels().survey(values.data(), values.size()); }
    void Read(std::uint64_t first, std::span<std::int32_t> samples) const
    {
        Kernels().clamp(values.data() + first, samples.size(), samples.data());
    }
};

// Physical values, to be converted by the signal axis in a mode that there is.
struct CRealValues
{
    std::span<const double> values;
    CSignalScale scale;
    RealToRawMode mode;

    CSampleSurvey Survey() const
    {
        CSampleSurvey survey{CRawRange::highestPossible, CRawRange::lowestPossible, 0};
        SampleChunk buffer; // NOLINT(cppcoreguidelines-pro-type-member-init): written first
        ForEachPiece(values.size(), [&](std::uint64_t first, std::uint64_t count) {
            Read(first, std::span(buffer).first(count));
            const CSampleSurvey ofChunk = Kernels().survey(buffer.data(), count);
            survey = {std::min(survey.lowest, ofChunk.lowest), std::max(survey.highest, ofChunk.highest),
                      survey.bits | ofChunk.bits};
        });
        return survey;
    }
    void Read(std::uint64_t first, std::span<std::int32_t> samples) const
    {
        scale.ToRaw(values.subspan(first, samples.size()), mode, samples.data());
    }
};

} // namespace veltaris::velflexlib::dataset
