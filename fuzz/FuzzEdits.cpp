// Edits of any file that opens: they go with saving and opening, keep out of other files, and leave pixels that are
// those of their lines. The end of a file, mostly samples, chooses the edits.
#include "LargeNumbers.h"
#include "support/EditChecks.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    constexpr std::size_t mostEdits = 12;
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    if (!IsFuzzing() || !HasLargeNumber(bytes))
        CheckEdits(bytes, bytes.substr(size - std::min(size, mostEdits)));
    return 0;
}
