// From files of any bytes something is saved or nothing, and what is saved opens.
#include "LargeNumbers.h"
#include "salvage/Salvage.h"
#include "support/Bytes.h"
#include "support/FileChecks.h"
#include "support/MemoryFile.h"

#include <VELOxdDll.h>

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

void CheckRanges(const veltaris::salvage::SalvagedChannel& channel)
{
    std::uint64_t next = 0;
    for (const auto& range : channel.ranges) {
        Require(range.first == next && range.count > 0, "the map has each line once");
        next += range.count;
    }
    Require(next == channel.lines, "the map has all lines");
    Require(channel.savedLines <= channel.heldLines && channel.heldLines <= channel.lines, "no line is made up");
}

void CheckSalvage(const std::string& bytes)
{
    static const std::string path = CreateMemoryFile();
    std::istringstream stream(bytes);
    const auto salvaged = veltaris::salvage::Salvage(stream, "file.oxd", bytes.size() % 2 == 0);
    for (const auto& channel : salvaged.channels)
        CheckRanges(channel);
    veltaris::salvage::Save(salvaged, path);
    const auto handle = OpenBytes(ReadBytes(path));
    CloseOxdFile(handle);
    Require(handle != 0, "what is saved opens");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    if (!IsFuzzing() || !HasLargeNumber(bytes))
        CheckSalvage(bytes);
    return 0;
}
