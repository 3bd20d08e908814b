// What a file or a caller may ask for before it is refused: every limit of the library, in one place. They keep memory
// and time in proportion to the bytes of a file, whatever the counts in it say. All are inclusive: what equals a limit
// is allowed.
#pragma once

#include <cstdint>

namespace veltaris::velstdlib::util::limits {

// Header text, in bytes.
inline constexpr std::uint64_t headerBytes = std::uint64_t{1} << 30;

// Groups of a data set, and information groups that one section links, unless the section has even more keys.
inline constexpr std::uint64_t listEntries = 65'536;

// Views, and the line operators' parameters in the section of each.
inline constexpr std::uint64_t views = 65'536;
inline constexpr std::uint64_t viewParameters = 65'536;

// Processors, and each one's inputs and, again, outputs.
inline constexpr std::uint64_t processors = 65'536;
inline constexpr std::uint64_t processorChannels = 65'536;

// Channel slots: of one group, and of all groups of a file together.
inline constexpr std::uint64_t channelSlots = 1'048'576;

// Lines that cost a file nothing. Where a channel is made or loaded, these are the lines of a channel without points,
// and of all such channels of a file together. Where a data set is saved, they are the lines of all channels without
// samples, and the lines that a file promised and did not hold.
inline constexpr std::uint64_t pointlessLines = 1'048'576;

// Points or lines of a channel; and those that a setter of only one of them takes.
inline constexpr std::uint64_t channelDimension = 0x7FFF'FFFF;
inline constexpr std::uint64_t singleDimension = 65'536;

// Samples of a channel.
inline constexpr std::uint64_t channelSamples = std::uint64_t{1} << 32;

// Header text that all channels of a file may claim together, beyond what its header has: several may name one section,
// and each counts for at least as much as a section of its own would need.
inline constexpr std::uint64_t sharedSectionBytes = 1'048'576;
inline constexpr std::uint64_t channelSectionBytes = 64;

// Text of parameter sections that all processors of a file may read together, beyond what its header has.
inline constexpr std::uint64_t sharedParameterBytes = 8'388'608;

} // namespace veltaris::velstdlib::util::limits
