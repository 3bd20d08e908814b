// Files of any bytes can be inspected, and what the inspection says of opening them is what happens.
#include "LargeNumbers.h"
#include "inspect/Inspection.h"
#include "support/FileChecks.h"

#include <VELOxdDll.h>

#include <algorithm>
#include <cstddef>
#include <sstream>
#include <stdexcept>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

void Require(bool holds, const char* what)
{
    if (!holds)
        throw std::logic_error(std::string("violated: ") + what);
}

void CheckInspection(const std::string& bytes)
{
    using namespace veltaris::inspect;
    std::istringstream stream(bytes);
    const Inspection inspection = InspectStream(stream, "file.oxd");
    const auto handle = OpenBytes(bytes);
    CloseOxdFile(handle);
    Require(inspection.Opens() == (handle != 0), "an inspection knows whether the library opens a file");
    Require(std::ranges::is_sorted(inspection.findings, {}, &Finding::offset), "findings are in file order");
    for (const ChannelSamples& channel : inspection.channels)
        Require(channel.linesThere <= channel.lines, "no more lines are there than a channel has");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    if (!IsFuzzing() || !HasLargeNumber(bytes))
        CheckInspection(bytes);
    return 0;
}
