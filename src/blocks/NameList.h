// Names in the caller's memory, one behind the other, each with a number. Not thread-safe, as the library is not.
#pragma once

#include <veloxd_blocks.h>

#include <cstdint>

namespace veltaris::blocks {

// Both return a VELBlockResult.
std::int32_t ListGroups(std::uint64_t file, VELBlockNames& names);
std::int32_t ListChannels(std::uint64_t file, std::uint64_t group, VELBlockNames& names);

} // namespace veltaris::blocks
