#include "support/FileChecks.h"

#include "support/Describe.h"
#include "support/MemoryFile.h"

#include <VELOxdDll.h>

#include <algorithm>
#include <stdexcept>

namespace {

void Require(bool holds, const char* what, const std::string& details = {})
{
    if (!holds)
        throw std::logic_error(std::string("does not hold: ") + what + "\n" + VELGetLastError() + "\n" + details);
}

// Where two texts begin to differ, in characters that can be printed.
std::string Difference(const std::string& a, const std::string& b)
{
    const auto at = static_cast<std::size_t>(std::ranges::mismatch(a, b).in1 - a.begin());
    const std::size_t from = at - std::min<std::size_t>(at, 60);
    std::string text = a.substr(from, 120) + "\n--- not ---\n" + b.substr(from, 120);
    std::ranges::replace_if(
        text, [](unsigned char c) { return c < ' ' && c != '\n'; }, '?');
    return text;
}

// A zero byte in a header reads as such and becomes a blank when saved; at the end of a text, blanks do not last.
bool HasZeroInHeader(std::string_view bytes)
{
    return bytes.substr(0, bytes.find("#!")).find('\0') != std::string_view::npos;
}

} // namespace

std::uint64_t OpenBytes(std::string_view bytes)
{
    static const CMemoryFile file;
    file.Write(bytes);
    VELGetLastError();
    const auto handle = OpenOxdFile(file.Path().c_str());
    Require((handle == 0) == VELHasLastError(), "a handle or an error, not both");
    if (handle == 0)
        CloseOxdFile(1); // which a failed open keeps
    return handle;
}

std::string SaveBytes(std::uint64_t handle)
{
    static const CMemoryFile file;
    ChangeOxdFilename(handle, file.Path().c_str());
    SaveOxdFile(handle);
    Require(!VELHasLastError(), "what opened can be saved");
    return file.Read();
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

// NOLINTNEXTLINE(misc-no-recursion): what is saved has none
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
    Require(again != 0, "what was saved opens", saved);
    const std::string seenAgain = Describe(again);
    Require(seenAgain == seen, "what was saved reads as before", Difference(seen, seenAgain));
    const std::string savedAgain = SaveBytes(again);
    Require(savedAgain == saved, "the second save gives the bytes of the first", Difference(saved, savedAgain));
    CloseOxdFile(again);
    return true;
}
