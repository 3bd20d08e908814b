// Files of any bytes must open and be readable, or fail with an error.
#include "LargeNumbers.h"
#include "support/FileChecks.h"

#include <cstddef>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    if (!IsFuzzing() || !HasLargeNumber(bytes))
        CheckOpening(bytes);
    return 0;
}
