// Whether calls of the library VELOxdDll have succeeded. Not thread-safe: the library has one error flag.
#pragma once

#include <VELOxdDll.h>
#include <veloxd_blocks.h>

#include <cstdint>

namespace veltaris::blocks {

// Lowers the flag, so that a failure that it shows afterwards is one of the calls that follow.
inline void BeginCalls()
{
    VELGetLastError();
}

// VEL_BLOCK_OK if no call has failed since BeginCalls, otherwise VEL_BLOCK_FAILED. The flag is down afterwards, and the
// text of the failure stays.
inline std::int32_t EndCalls()
{
    if (!VELHasLastError())
        return VEL_BLOCK_OK;
    VELGetLastError();
    return VEL_BLOCK_FAILED;
}

} // namespace veltaris::blocks
