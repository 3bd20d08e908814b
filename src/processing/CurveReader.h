// The lines of a channel as curves.
#pragma once

#include "curves/Curve.h"
#include "curves/CurveOptions.h"
#include "velflexlib/dataset/channels/Databuffer.h"

#include <cstdint>
#include <vector>

namespace veltaris::processing {

// Reads one curve at a time, in the unit of the signal axis. The channel must outlive this, and no other thread may
// change its size meanwhile. Not thread-safe.
class CCurveReader
{
public:
    explicit CCurveReader(const velflexlib::dataset::CDataBuffer& channel);

    // The signal is valid until the next call. Points that were not acquired are NaN; so is all of a line that cannot
    // be read.
    curves::CCurve Read(std::uint64_t line);

private:
    const velflexlib::dataset::CDataBuffer& m_channel;
    std::vector<double> m_signal;
};

// What the channel itself says of its curves: the limits of its signal, which saturated samples have, and the step
// between neighbouring values. Everything else has its default.
curves::CCurveOptions OptionsOf(const velflexlib::dataset::CDataBuffer& channel);

} // namespace veltaris::processing
