// Raw samples as they are stored, in files and in memory alike: signed little-endian integers of 8, 16 or 32 bits that
// span the whole of their type.
#pragma once

#include "velflexlib/dataset/samples/kernels/SampleKernels.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace veltaris::velflexlib::dataset {

// Its value is the number of bytes that a stored sample has.
enum class SampleWidth : std::uint8_t
{
    Bits8 = 1,
    Bits16 = 2,
    Bits32 = 4,
};

constexpr std::size_t BytesPerSample(SampleWidth width)
{
    return static_cast<std::size_t>(width);
}

// Throws std::runtime_error "Invalid bit count: " and the number, unless it is 8, 16 or 32.
SampleWidth WidthOfBits(std::int64_t bitCount);

// The loops over samples of that width.
const CStoredKernels& KernelsOf(SampleWidth width);

// There must be as many stored bytes as the samples take, at an address that is a multiple of the width.
void DecodeSamples(const std::byte* stored, SampleWidth width, std::span<std::int32_t> samples);
void EncodeSamples(std::span<const std::int32_t> samples, SampleWidth width, std::byte* stored);

// The same for one sample.
inline std::int32_t DecodeSample(const std::byte* stored, SampleWidth width)
{
    if (width == SampleWidth::Bits32)
        return *reinterpret_cast<const std::int32_t*>(stored) >> 2;
    return width == SampleWidth::Bits16 ? *reinterpret_cast<const std::int16_t*>(stored) << 14
                                        : *reinterpret_cast<const std::int8_t*>(stored) << 22;
}
inline void EncodeSample(std::int32_t sample, SampleWidth width, std::byte* stored)
{
    if (width == SampleWidth::Bits32)
        *reinterpret_cast<std::int32_t*>(stored) = sample << 2;
    else if (width == SampleWidth::Bits16)
        *reinterpret_cast<std::int16_t*>(stored) = static_cast<std::int16_t>(sample >> 14);
    else
        *reinterpret_cast<std::int8_t*>(stored) = static_cast<std::int8_t>(sample >> 22);
}

// From one width to another.
void TranscodeSamples(const std::byte* from, SampleWidth fromWidth, std::uint64_t count, std::byte* to,
                      SampleWidth toWidth);

// Zeros the bits that a stored sample has beyond those of a raw one.
void DropSpareBits(std::span<std::byte> stored, SampleWidth width);

// Whether samples that have no other bits than these come back from that width as they were.
constexpr bool FitInto(SampleWidth width, std::int32_t bits)
{
    constexpr unsigned rawBits = 30;
    const auto storedBits = static_cast<unsigned>(8 * BytesPerSample(width));
    return storedBits >= rawBits || (static_cast<std::uint32_t>(bits) << (32 - rawBits + storedBits)) == 0;
}

// Samples are worked on in pieces that stay in the processor's first cache.
inline constexpr std::size_t samplesPerPiece = 2048;

// Calls use(first, count) for adjacent pieces of so many samples.
template <class Use>
void ForEachPiece(std::uint64_t sampleCount, Use use)
{
    for (std::uint64_t first = 0; first < sampleCount; first += samplesPerPiece)
        use(first, std::min<std::uint64_t>(sampleCount - first, samplesPerPiece));
}

} // namespace veltaris::velflexlib::dataset
