// Raw samples as files store them: signed little-endian integers of 8, 16 or 32 bits that span the whole of their type.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace veltaris::velflexlib::dataset {

// Throws std::runtime_error "Invalid bit count: " and the number, unless it is 8, 16 or 32.
void CheckBitCount(std::int64_t bitCount);

// There must be bitCount / 8 bytes for each sample.
void DecodeSamples(std::span<const std::byte> bytes, std::int64_t bitCount, std::span<std::int32_t> samples);
void EncodeSamples(std::span<const std::int32_t> samples, std::int64_t bitCount, std::span<std::byte> bytes);

} // namespace veltaris::velflexlib::dataset
