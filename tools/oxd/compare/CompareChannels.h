// Compares two channels in all but their samples.
#pragma once

#include "oxd/compare/Recorder.h"
#include "oxd/library/Channel.h"

#include <cstdint>

namespace oxd {

// The channel of each file. The place names it, for both.
struct ChannelPair // NOLINT(cppcoreguidelines-pro-type-member-init): a pair cannot be made without its channels
{
    Channel a;
    Channel b;
    std::int64_t bitsOfA = 0; // of a stored sample
    std::int64_t bitsOfB = 0;
    Place place = {};
};

void CompareSizes(const ChannelPair& channels, Recorder& recorder);

// Names, units, min and range of the three axes, and min and range of the point axes that lines have for themselves.
void CompareAxes(const ChannelPair& channels, Recorder& recorder);

} // namespace oxd
