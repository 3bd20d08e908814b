// Any file that opens can be saved, then opens and reads as before, and saving it again writes the same bytes.
#include "LargeNumbers.h"
#include "support/FileChecks.h"

#include <cstddef>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    if (!IsFuzzing() || !HasLargeNumber(bytes))
        CheckRoundTrip(bytes);
    return 0;
}
