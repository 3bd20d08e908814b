#include "velflexlib/dataset/SampleCodec.h"

#include "velflexlib/dataset/SampleKernels.h"

#include <boost/throw_exception.hpp>

#include <bit>
#include <stdexcept>
#include <string>

namespace veltaris::velflexlib::dataset {

namespace {

static_assert(std::endian::native == std::endian::little, "samples are stored as they are in memory");

template <class Stored>
Stored* As(std::byte* bytes)
{
    return reinterpret_cast<Stored*>(bytes);
}

template <class Stored>
const Stored* As(const std::byte* bytes)
{
    return reinterpret_cast<const Stored*>(bytes);
}

} // namespace

SampleWidth WidthOfBits(std::int64_t bitCount)
{
    if (bitCount != 8 && bitCount != 16 && bitCount != 32)
        BOOST_THROW_EXCEPTION(std::runtime_error("Invalid bit count: " + std::to_string(bitCount)));
    return static_cast<SampleWidth>(bitCount / 8);
}

void DecodeSamples(const std::byte* stored, SampleWidth width, std::span<std::int32_t> samples)
{
    const CSampleKernels& kernels = Kernels();
    switch (width) {
    case SampleWidth::Bits8:
        return kernels.widen8(As<std::int8_t>(stored), samples.size(), samples.data());
    case SampleWidth::Bits16:
        return kernels.widen16(As<std::int16_t>(stored), samples.size(), samples.data());
    case SampleWidth::Bits32:
        return kernels.widen32(As<std::int32_t>(stored), samples.size(), samples.data());
    }
}

void EncodeSamples(std::span<const std::int32_t> samples, SampleWidth width, std::byte* stored)
{
    const CSampleKernels& kernels = Kernels();
    switch (width) {
    case SampleWidth::Bits8:
        return kernels.narrow8(samples.data(), samples.size(), As<std::int8_t>(stored));
    case SampleWidth::Bits16:
        return kernels.narrow16(samples.data(), samples.size(), As<std::int16_t>(stored));
    case SampleWidth::Bits32:
        return kernels.narrow32(samples.data(), samples.size(), As<std::int32_t>(stored));
    }
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
    constexpr std::int32_t spareBits = 3;
    auto* const samples = As<std::int32_t>(stored.data());
    const std::size_t count = stored.size() / sizeof *samples;
    for (std::size_t i = 0; i < count; ++i)
        samples[i] &= ~spareBits;
}

} // namespace veltaris::velflexlib::dataset
