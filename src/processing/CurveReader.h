// The lines of a channel as curves.
#pragma once

#include "curves/Curve.h"
#include "curves/CurveOptions.h"
#include "curves/Reason.h"
#include "velflexlib/dataset/channels/Databuffer.h"

#include <cstdint>
#include <vector>

namespace veltaris::processing {

// A line of a channel: a curve, or why there is none.
struct CReading
{
    curves::CCurve curve;
    curves::Reason obstacle = curves::Reason::None;
};

// Reads one curve at a time, in the unit of the signal axis. The channel must outlive this, and no other thread may
// change its size meanwhile. Not thread-safe.
class CCurveReader
{
public:
    explicit CCurveReader(const velflexlib::dataset::CDataBuffer& channel);

    // The signal is valid until the next call. Points that were not acquired are NaN; so is all of a line that cannot
    // be read, since it claims more points than there are.
    CReading Read(std::uint64_t line);

private:
    const velflexlib::dataset::CDataBuffer& m_channel;
    std::vector<double> m_signal;
};

// Whether the numbers of the signal axis are such that samples have values that can be computed with.
bool HasUsableSignal(const velflexlib::dataset::CDataBuffer& channel);

// What the channel itself says of its curves: the limits of its signal, which saturated samples have, and the step
// between neighbouring values. Everything else has its default.
curves::CCurveOptions OptionsOf(const velflexlib::dataset::CDataBuffer& channel);

} // namespace veltaris::processing
