// Conversion between raw samples and samples as they are stored, in files and in memory alike: signed little-endian
// integers of 8, 16 or 32 bits that span the whole range of their type. The highest bits of a raw sample are the
// highest bits of the stored one. What 8 or 16 bits cannot hold is cut off (rounded down); 32 bits have two bits to
// spare.
//
// Nothing here holds state: these functions are thread-safe as long as the samples that they are given are.
#pragma once

#include "velflexlib/dataset/samples/kernels/RawRange.h"
#include "velflexlib/dataset/samples/kernels/SampleKernels.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>

namespace veltaris::velflexlib::dataset {

// The value of each enumerator is the number of bytes that a stored sample has.
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

// As `spareBits`, for a width that is only known at run time.
constexpr int SpareBits(SampleWidth width)
{
    return 8 * static_cast<int>(BytesPerSample(width)) - rawBits;
}

// The width of samples with 8, 16 or 32 bits. Throws std::runtime_error "Invalid bit count: " and the number for any
// other count.
SampleWidth WidthOfBits(std::int64_t bitCount);

// The loops over samples that are stored in this width.
const CStoredKernels& KernelsOf(SampleWidth width);

// `stored` must have as many bytes as that number of samples takes, at an address that is a multiple of the width. The
// samples to be stored must be within the raw range.
void DecodeSamples(const std::byte* stored, SampleWidth width, std::span<std::int32_t> samples);
void EncodeSamples(std::span<const std::int32_t> samples, SampleWidth width, std::byte* stored);

// The same for a single sample, inline because pixels are read and written one at a time.
inline std::int32_t DecodeSample(const std::byte* stored, SampleWidth width)
{
    if (width == SampleWidth::Bits32)
        return *reinterpret_cast<const std::int32_t*>(stored) >> spareBits<std::int32_t>;
    return width == SampleWidth::Bits16 ? *reinterpret_cast<const std::int16_t*>(stored) << -spareBits<std::int16_t>
                                        : *reinterpret_cast<const std::int8_t*>(stored) << -spareBits<std::int8_t>;
}
inline void EncodeSample(std::int32_t sample, SampleWidth width, std::byte* stored)
{
    if (width == SampleWidth::Bits32)
        *reinterpret_cast<std::int32_t*>(stored) = sample << spareBits<std::int32_t>;
    else if (width == SampleWidth::Bits16)
        *reinterpret_cast<std::int16_t*>(stored) = static_cast<std::int16_t>(sample >> -spareBits<std::int16_t>);
    else
        *reinterpret_cast<std::int8_t*>(stored) = static_cast<std::int8_t>(sample >> -spareBits<std::int8_t>);
}

// Converts stored samples from one width to another. `from` and `to` must not overlap.
void TranscodeSamples(const std::byte* from, SampleWidth fromWidth, std::uint64_t count, std::byte* to,
                      SampleWidth toWidth);

// Clears the spare bits of stored samples, which a file may have set.
void DropSpareBits(std::span<std::byte> stored, SampleWidth width);

// Whether raw samples that have no bits set other than these can be stored in that width without loss.
constexpr bool FitInto(SampleWidth width, std::int32_t bits)
{
    const int lostBits = -SpareBits(width);
    return lostBits <= 0 || (static_cast<std::uint32_t>(bits) << (32 - lostBits)) == 0;
}

// Long lines are processed in chunks of this many samples, which stay in the processor's first-level cache.
inline constexpr std::size_t samplesPerPiece = 2048;

// Calls use(first, count) for adjacent chunks, in ascending order, which together are all of the samples.
template <class Use>
void ForEachPiece(std::uint64_t sampleCount, Use use)
{
    for (std::uint64_t first = 0; first < sampleCount; first += samplesPerPiece)
        use(first, std::min<std::uint64_t>(sampleCount - first, samplesPerPiece));
}

} // namespace veltaris::velflexlib::dataset
