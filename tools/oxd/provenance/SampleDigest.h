// The checksum of the samples of a channel.
#pragma once

#include "oxd/library/Channel.h"

#include <string>

namespace oxd {

// SHA-256, in hexadecimal, of what `oxd export` writes as .raw: raw samples in 32 bits with the lowest byte first, line
// by line, and 0 for points that were not acquired or cannot be read.
std::string DigestOfSamples(const Channel& channel);

} // namespace oxd
