// Compares the samples of two channels, line by line.
#pragma once

#include "oxd/compare/CompareChannels.h"

namespace oxd {

// Compares how many samples of each line are valid, and the values of those that both channels have. Where their units
// differ, values cannot be compared: the units are the difference then. A line that one channel lacks has no valid
// samples there.
void CompareSamples(const ChannelPair& channels, Recorder& recorder);

} // namespace oxd
