// Where the samples of a channel stand in its file.
#pragma once

#include <cstdint>
#include <string>

namespace veltaris::inspect {

// Where the samples of one channel stand in the file, as its header and those of the channels before it have it.
struct ChannelSamples
{
    std::uint64_t group = 0, slot = 0; // positions, from 0
    std::string section, name;         // of the header; of the signal axis
    std::uint64_t points = 0, lines = 0;
    std::int64_t bits = 0;               // of a stored sample: 8, 16, 32, or unusable
    std::uint64_t offset = 0, bytes = 0; // where its samples begin in the file, and how many bytes it claims
    std::uint64_t linesThere = 0;        // lines, from the first one on, whose samples the file has
    // False when a size of this or an earlier channel is damaged, so that the samples may not be the channel's own.
    bool isCertain = true;
    // False too, then only because the bytes of the file would fit exactly if one digit of such a size were another: a
    // file that was cut off may look like this by chance, above all a small one.
    bool isDoubtedForOneDigit = false;
};

} // namespace veltaris::inspect
