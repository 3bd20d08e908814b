#include "velflexlib/dataset/samples/SampleCodec.h"

#include <boost/throw_exception.hpp>

#include <array>
#include <bit>
#include <stdexcept>
#include <string>

namespace veltaris::velflexlib::dataset {

namespace {

static_assert(std::endian::native == std::endian::little, "samples are stored as they are in memory");

} // namespace

SampleWidth WidthOfBits(std::int64_t bitCount)
{
    if (bitCount != 8 && bitCount != 16 && bitCount != 32)
        BOOST_THROW_EXCEPTION(std::runtime_error("Invalid bit count: " + std::to_string(bitCount)));
    return static_cast<SampleWidth>(bitCount / 8);
}

const CStoredKernels& KernelsOf(SampleWidth width)
{
    const CSampleKernels& kernels = Kernels();
    switch (width) {
    case SampleWidth::Bits8:
        return kernels.stored8;
    case SampleWidth::Bits16:
        return kernels.stored16;
    case SampleWidth::Bits32:
        break;
    }
    return kernels.stored32;
}

void DecodeSamples(const std::byte* stored, SampleWidth width, std::span<std::int32_t> samples)
{
    KernelsOf(width).widen(stored, samples.size(), samples.data());
}

void EncodeSamples(std::span<const std::int32_t> samples, SampleWidth width, std::byte* stored)
{
    KernelsOf(width).narrow(samples.data(), samples.size(), stored);
}

void TranscodeSamples(const std::byte* from, SampleWidth fromWidth, std::uint64_t count, std::byte* to,
                      SampleWidth toWidth)
{
    std::array<std::int32_t, samplesPerPiece> raw; // NOLINT(cppcoreguidelines-pro-type-member-init): written first
    ForEachPiece(count, [&](std::uint64_t first, std::uint64_t pieceCount) {
        const auto piece = std::span(raw).first(pieceCount);
        DecodeSamples(from + first * BytesPerSample(fromWidth), fromWidth, piece);
        EncodeSamples(piece, toWidth, to + first * BytesPerSample(toWidth));
    });
}

void DropSpareBits(std::span<std::byte> stored, SampleWidth width)
{
    if (width != SampleWidth::Bits32)
        return;
    constexpr std::int32_t rawMask = -(std::int32_t{1} << spareBits<std::int32_t>);
    auto* const samples = reinterpret_cast<std::int32_t*>(stored.data());
    const std::size_t count = stored.size() / sizeof *samples;
    for (std::size_t i = 0; i < count; ++i)
        samples[i] &= rawMask;
}

} // namespace veltaris::velflexlib::dataset
