#include "support/EditChecks.h"

#include "support/Bytes.h"
#include "support/Describe.h"
#include "support/Edits.h"
#include "support/FileChecks.h"
#include "support/MemoryFile.h"

#include <VELOxdDll.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <limits>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

constexpr std::int32_t lineOps = 6;
constexpr std::uint64_t mostLines = 4;  // of a channel are compared with their pixels
constexpr std::uint64_t mostPoints = 6; // about

// A pixel, which is there in most files, gets another value.
void WritePixel(std::uint64_t handle, std::size_t number)
{
    SetChannelData_PixelRaw(handle, 0, 0, number % 2, 0, static_cast<std::int32_t>(number) * 1'000'003);
}

// Edits need what only some files have, so that they may fail.
void Apply(std::uint64_t handle, char edit)
{
    const std::size_t number = static_cast<unsigned char>(edit);
    if (number < Edits().size())
        Edits()[number](handle);
    else
        WritePixel(handle, number - Edits().size());
    VELGetLastError();
}

[[noreturn]] void Fail(const char* what, std::string_view edits, const std::string& details = {})
{
    std::string numbers;
    for (const char edit : edits)
        numbers += ' ' + std::to_string(static_cast<unsigned char>(edit));
    throw std::logic_error(std::string("violated: ") + what + "\nedits:" + numbers + '\n' + details);
}

void RequireSame(const std::string& a, const std::string& b, const char* what, std::string_view edits)
{
    if (a != b)
        Fail(what, edits, Difference(a, b));
}

// Returns 0 if the bytes do not open.
std::uint64_t OpenEdited(std::string_view bytes, std::string_view edits)
{
    const auto handle = OpenBytes(bytes);
    VELGetLastError();
    for (const char edit : edits)
        Apply(handle, edit);
    return handle;
}

std::string SaveAndClose(std::uint64_t handle)
{
    std::string saved = SaveBytes(handle);
    CloseOxdFile(handle);
    return saved;
}

std::string Edited(std::string_view bytes, std::string_view edits)
{
    return SaveAndClose(OpenEdited(bytes, edits));
}

std::vector<std::uint64_t> GroupIds(std::uint64_t handle)
{
    std::vector<std::uint64_t> ids(GetGroupCount(handle) + 1); // one more, so that the pointer is not null
    GetAllGroupIds(handle, ids.data());
    ids.pop_back();
    return ids;
}

// What later edits meet.
struct State
{
    std::vector<std::uint64_t> ids;
    std::string description;
    std::string withNewParts; // the file with more groups and items, and with a new channel in place of each group's

    bool operator==(const State&) const = default;
};

// Edits the data set.
std::string SaveWithNewParts(std::uint64_t handle)
{
    CreateGroup(handle, 32);
    CreateInfoGroupWithName(handle, "new");
    for (std::uint64_t info = 0; info < GetInfoGroupCount(handle); ++info)
        CreateInfoItem(handle, info, "new", std::to_string(info).c_str());
    for (const auto group : GroupIds(handle)) {
        const auto slot = GetChannelCount(handle, group);
        SetChannelCount(handle, group, slot + 1);
        SetChannelXYDimension(handle, group, slot, 1, 1);
    }
    return SaveBytes(handle);
}

// The second of two equal names ends so, at the end of a key or of a line.
bool HasNumberedName(std::string_view header)
{
    return std::ranges::any_of(std::array{"_2=", "_2\r", "_2\n"},
                               [&](const char* end) { return header.find(end) != std::string_view::npos; });
}

// How many groups of measurement information are written as trees. They are where a list could not hold them.
std::string_view TreeCount(std::string_view header)
{
    const auto at = header.find("\nInfoSetCount=");
    return at == std::string_view::npos ? std::string_view() : header.substr(at, header.find('\r', at) - at);
}

// Saves and opens the file after the first edits, and makes the others then. A file keeps neither the ids of groups,
// nor the bits that new channels get, nor points that no line of a channel uses, nor that an axis has no name, nor that
// names are equal, which it numbers, nor that information which it holds as trees was a list: then later edits would
// meet something else.
void CheckInterrupted(std::string_view bytes, std::string_view edits, std::size_t first, const std::string& expected)
{
    auto handle = OpenEdited(bytes, edits.substr(0, first));
    State before{GroupIds(handle), Describe(handle), {}};
    const std::string saved = SaveBytes(handle);
    before.withNewParts = SaveWithNewParts(handle);
    CloseOxdFile(handle);

    handle = OpenBytes(saved);
    const State after{GroupIds(handle), Describe(handle), SaveWithNewParts(handle)};
    CloseOxdFile(handle);

    if (before != after || HasNumberedName(saved))
        return;
    const std::string resumed = Edited(saved, edits.substr(first));
    if (TreeCount(resumed) == TreeCount(expected))
        RequireSame(resumed, expected, "edits are the same after saving and opening", edits);
}

// The first file as it is edited while another one is: a file of the same bytes, with the edits in reverse order.
std::string EditedBesideAnother(std::string_view bytes, std::string_view edits)
{
    static const std::string otherPath = CreateMemoryFile();
    WriteBytes(otherPath, bytes);
    const auto handle = OpenBytes(bytes);
    const auto other = OpenOxdFile(otherPath.c_str());
    for (std::size_t i = 0; i < edits.size(); ++i) {
        Apply(other, edits[edits.size() - 1 - i]);
        Apply(handle, edits[i]);
    }
    std::string saved = SaveAndClose(handle);
    CloseOxdFile(other);
    return saved;
}

class CPixelCheck
{
public:
    CPixelCheck(std::uint64_t handle, std::string_view edits) : m_handle(handle), m_edits(edits) {}

    void All() const
    {
        for (const auto group : GroupIds(m_handle)) {
            for (std::uint64_t slot = 0; slot < std::min<std::uint64_t>(GetChannelCount(m_handle, group), 8); ++slot) {
                if (HasChannelBuffer(m_handle, group, slot))
                    Channel(group, slot);
            }
        }
    }

private:
    void Channel(std::uint64_t group, std::uint64_t slot) const
    {
        const auto lines = std::min(GetChannelData_Lines(m_handle, group, slot), mostLines);
        for (std::uint64_t line = 0; line < lines; ++line) {
            const auto valid = GetChannelData_PointsPerLine(m_handle, group, slot, line);
            if (valid > GetChannelData_Points(m_handle, group, slot))
                continue; // cannot be read
            for (std::int32_t lineOp = 0; lineOp < lineOps; ++lineOp)
                Line(group, slot, line, valid, lineOp);
        }
    }

    // A sample that the line does not have through the operator, its pixel has not, either.
    void Line(std::uint64_t group, std::uint64_t slot, std::uint64_t line, std::uint64_t valid, std::int32_t op) const
    {
        std::vector<std::int32_t> raw(valid + 1, untouched);
        std::vector<double> real(valid + 1, untouched);
        GetChannelData_LineRaw(m_handle, group, slot, line, op, raw.data());
        GetChannelData_LineReal(m_handle, group, slot, line, op, real.data());
        const std::uint64_t step = 1 + valid / mostPoints;
        for (std::uint64_t x = 0; x < valid; x += step) {
            const auto rawPixel = GetChannelData_PixelRaw(m_handle, group, slot, x, line, op);
            Compare(rawPixel == raw[x], raw[x] == untouched);
            const double realPixel = GetChannelData_PixelReal(m_handle, group, slot, x, line, op);
            Compare(std::bit_cast<std::uint64_t>(realPixel) == std::bit_cast<std::uint64_t>(real[x]),
                    raw[x] == untouched);
        }
    }

    void Compare(bool isEqual, bool isMissing) const
    {
        if (VELHasLastError() != isMissing)
            Fail("a pixel fails where its line has no sample, and only there", m_edits);
        if (!isEqual && !isMissing)
            Fail("a pixel is that of its line", m_edits);
        VELGetLastError();
    }

    static constexpr std::int32_t untouched = std::numeric_limits<std::int32_t>::min(); // no raw sample

    std::uint64_t m_handle;
    std::string_view m_edits;
};

// The file as it is edited while its samples are read, which changes nothing.
std::string EditedWhileRead(std::string_view bytes, std::string_view edits)
{
    const auto handle = OpenBytes(bytes);
    const CPixelCheck pixels(handle, edits);
    for (const char edit : edits) {
        pixels.All();
        Apply(handle, edit);
    }
    pixels.All();
    std::string description = Describe(handle);
    CloseOxdFile(handle);
    return description;
}

} // namespace

bool CheckEdits(std::string_view bytes, std::string_view edits)
{
    const auto handle = OpenEdited(bytes, edits);
    if (handle == 0)
        return false;
    const std::string description = Describe(handle);
    const std::string edited = SaveAndClose(handle);
    RequireSame(EditedWhileRead(bytes, edits), description, "reading changes nothing", edits);
    if (!HasZeroInHeader(bytes)) {
        CheckInterrupted(bytes, edits, 0, edited);
        CheckInterrupted(bytes, edits, edits.size() / 2, edited);
    }
    RequireSame(EditedBesideAnother(bytes, edits), edited, "edits of a file do not depend on another one", edits);
    return true;
}
