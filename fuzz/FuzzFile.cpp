// Any bytes open and can be read, or fail with an error.
#include "support/FileChecks.h"

#include <cstddef>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    CheckOpening({reinterpret_cast<const char*>(data), size});
    return 0;
}
