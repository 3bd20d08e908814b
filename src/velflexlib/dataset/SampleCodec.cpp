#include "velflexlib/dataset/SampleCodec.h"

#include <boost/throw_exception.hpp>

#include <bit>
#include <cstring>
#include <stdexcept>
#include <string>

namespace veltaris::velflexlib::dataset {

namespace {

static_assert(std::endian::native == std::endian::little, "samples are copied as they are in memory");

constexpr int rawBits = 30;

// Shifts towards the top of a wider type, or, when negative, down to the width of a narrower one.
constexpr std::int32_t Shifted(std::int32_t value, int bits)
{
    return bits >= 0 ? value << bits : value >> -bits;
}

template <class Stored>
constexpr int storedBits = 8 * static_cast<int>(sizeof(Stored));

template <class Stored>
void Decode(std::span<const std::byte> bytes, std::span<std::int32_t> samples)
{
    const std::byte* from = bytes.data();
    for (std::int32_t& sample : samples) {
        Stored stored{};
        std::memcpy(&stored, from, sizeof stored);
        sample = Shifted(stored, rawBits - storedBits<Stored>);
        from += sizeof stored;
    }
}

template <class Stored>
void Encode(std::span<const std::int32_t> samples, std::span<std::byte> bytes)
{
    std::byte* to = bytes.data();
    for (const std::int32_t sample : samples) {
        const auto stored = static_cast<Stored>(Shifted(sample, storedBits<Stored> - rawBits));
        std::memcpy(to, &stored, sizeof stored);
        to += sizeof stored;
    }
}

// Calls use with a value of the type that samples of this width are stored as.
template <class Use>
void WithStoredType(std::int64_t bitCount, Use use)
{
    CheckBitCount(bitCount);
    if (bitCount == 8)
        use(std::int8_t{});
    else if (bitCount == 16)
        use(std::int16_t{});
    else
        use(std::int32_t{});
}

} // namespace

void CheckBitCount(std::int64_t bitCount)
{
    if (bitCount != 8 && bitCount != 16 && bitCount != 32)
        BOOST_THROW_EXCEPTION(std::runtime_error("Invalid bit count: " + std::to_string(bitCount)));
}

void DecodeSamples(std::span<const std::byte> bytes, std::int64_t bitCount, std::span<std::int32_t> samples)
{
    WithStoredType(bitCount, [&](auto stored) { Decode<decltype(stored)>(bytes, samples); });
}

void EncodeSamples(std::span<const std::int32_t> samples, std::int64_t bitCount, std::span<std::byte> bytes)
{
    WithStoredType(bitCount, [&](auto stored) { Encode<decltype(stored)>(samples, bytes); });
}

} // namespace veltaris::velflexlib::dataset
