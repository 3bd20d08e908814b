#include "support/FileChecks.h"

#include "support/Bytes.h"
#include "support/Describe.h"
#include "support/MemoryFile.h"

#include <VELOxdDll.h>

#include <algorithm>
#include <stdexcept>

namespace {

void Require(bool holds, const char* what, const std::string& details = {})
{
    if (!holds)
        throw std::logic_error(std::string("violated: ") + what + "\n" + VELGetLastError() + "\n" + details);
}

} // namespace

std::string Difference(const std::string& a, const std::string& b)
{
    const auto at = static_cast<std::size_t>(std::ranges::mismatch(a, b).in1 - a.begin());
    const std::size_t from = at - std::min<std::size_t>(at, 60);
    return a.substr(from, 120) + "\n--- not ---\n" + b.substr(from, 120);
}

bool HasZeroInHeader(std::string_view bytes)
{
    return bytes.substr(0, bytes.find("#!")).find('\0') != std::string_view::npos;
}

std::uint64_t OpenBytes(std::string_view bytes)
{
    static const std::string path = CreateMemoryFile();
    WriteBytes(path, bytes);
    VELGetLastError();
    const auto handle = OpenOxdFile(path.c_str());
    Require((handle == 0) == VELHasLastError(), "opening returns either a handle or an error");
    if (handle == 0)
        CloseOxdFile(1); // a failed open keeps its handle
    return handle;
}

std::string SaveBytes(std::uint64_t handle)
{
    static const std::string path = CreateMemoryFile();
    ChangeOxdFilename(handle, path.c_str());
    SaveOxdFile(handle);
    Require(!VELHasLastError(), "an opened file can be saved");
    return ReadBytes(path);
}

void CloseAll()
{
    for (std::uint64_t handle = 1; handle < 8; ++handle)
        CloseOxdFile(handle);
}

bool CheckOpening(std::string_view bytes)
{
    const auto handle = OpenBytes(bytes);
    if (handle == 0)
        return false;
    Describe(handle);
    CloseOxdFile(handle);
    return true;
}

// NOLINTNEXTLINE(misc-no-recursion): a saved file has no zeros in its header
bool CheckRoundTrip(std::string_view bytes)
{
    const auto handle = OpenBytes(bytes);
    if (handle == 0)
        return false;
    const std::string saved = SaveBytes(handle);
    const std::string seen = Describe(handle);
    CloseOxdFile(handle);
    if (HasZeroInHeader(bytes))
        return CheckRoundTrip(saved);

    const auto again = OpenBytes(saved);
    Require(again != 0, "a saved file opens", saved);
    const std::string seenAgain = Describe(again);
    Require(seenAgain == seen, "a saved file reads as before", Difference(seen, seenAgain));
    const std::string savedAgain = SaveBytes(again);
    Require(savedAgain == saved, "the second save writes the bytes of the first", Difference(saved, savedAgain));
    CloseOxdFile(again);
    return true;
}
