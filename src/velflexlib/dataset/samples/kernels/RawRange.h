// The range of raw samples, and how many bits a stored sample of each width has beyond those of a raw one. Everything
// that shifts, clamps or scales samples derives its numbers from these.
//
// Only constants may be defined here: the loops are compiled with instructions that not every processor has, and the
// linker may keep their copy of a shared function.
#pragma once

#include <cstdint>

namespace veltaris::velflexlib::dataset {

// A raw sample is a signed integer of this many bits, whatever the width in which it is stored.
inline constexpr int rawBits = 30;

inline constexpr std::int32_t lowestRaw = -(std::int32_t{1} << (rawBits - 1));
inline constexpr std::int32_t highestRaw = -(lowestRaw + 1);

// The number of steps from the lowest raw sample to the highest, 2^30 - 1.
inline constexpr double rawSpan = static_cast<double>(highestRaw) - static_cast<double>(lowestRaw);

// The bits of the stored type below those of the raw sample, which are zero: 2 of 32. Negative where the stored type
// lacks the lowest bits of the raw sample: -14 for 16 bits, -22 for 8.
template <class Stored>
inline constexpr int spareBits = 8 * static_cast<int>(sizeof(Stored)) - rawBits;

} // namespace veltaris::velflexlib::dataset
