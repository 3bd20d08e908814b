// Opens, edits and saves files whose headers grow in one way each, and dumps callgrind's counts after each step.
#include "support/Bytes.h"
#include "support/Lines.h"
#include "support/MemoryFile.h"

#include <VELOxdDll.h>

#include <valgrind/callgrind.h>

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <string>
#include <string_view>

namespace {

// The beginning of a header, which may end with a key whose value is n, and lines that are repeated n times.
struct Shape
{
    const char* name;
    std::string_view begin;
    const char* lines;
    const char* moreLines = "";
};

constexpr Shape shapes[] = {
    {"sections", "", "[S#]\nkey=value\n"},
    {"keys", "[S]\n", "Key#=value\n"},
    {"sibling info groups", "InfoSetCount=", "InfoSet#=T#\n", "[DataSet\\T#]\nx=1\n"},
    {"channel groups", "GroupCount=", "Gr#-Count=1\nGr#-Ch0=C#\n", "[C#]\nPoints=1\nLines=1\n"},
    {"line dimensions", "GroupCount=1\nGr0-Count=1\nGr0-Ch0=C\n[C]\nVersion=3\nPoints=1\nLines=", "LineDim#Range=7\n"},
    {"flat info", "SetInfos=I\n[I]\n-- G --=-\n", "item#=value\n"},
};

std::string Header(const Shape& shape, int n)
{
    const std::string count = shape.begin.ends_with('=') ? std::to_string(n) + "\n" : "";
    return "[DataSet]\nVersion=2\n" + std::string(shape.begin) + count + Lines(n, shape.lines) +
           Lines(n, shape.moreLines) + "\r\n#!";
}

void Edit(std::uint64_t handle)
{
    const auto group = CreateGroup(handle, 16);
    SetChannelCount(handle, group, 1);
    SetChannelXYDimension(handle, group, 0, 4, 4);
    SetChannelData_PixelRaw(handle, group, 0, 0, 0, 1);
    SetChannelData_PointAxisMin(handle, group, 0, 1);
    CreateInfoItem(handle, CreateInfoGroupWithName(handle, "added"), "item", "value");
    AddMetaInfoItemGroup(handle, 1, "added, too");
    DeleteInfoGroup(handle, 0);
}

bool Run(const Shape& shape, int n)
{
    static const std::string path = CreateMemoryFile();
    WriteBytes(path, Header(shape, n) + std::string(static_cast<std::size_t>(n), '\0'));
    const auto step = [&](const char* name) {
        const std::string label = std::string(shape.name) + "|" + std::to_string(n) + "|" + name;
        CALLGRIND_DUMP_STATS_AT(label.c_str());
    };
    CALLGRIND_ZERO_STATS;
    const auto handle = OpenOxdFile(path.c_str());
    step("open");
    Edit(handle);
    step("edit");
    SaveOxdFile(handle);
    step("save");
    CloseOxdFile(handle);
    if (!VELHasLastError())
        return true;
    std::printf("%s: %s\n", shape.name, VELGetLastError()); // also clears the flag
    return false;
}

} // namespace

int main(int argc, char** argv)
try {
    if (argc != 2)
        return 2;
    const int n = static_cast<int>(std::strtol(argv[1], nullptr, 10));
    if (n < 1)
        return 2;
    for (const Shape& shape : shapes) {
        if (!Run(shape, n) || !Run(shape, 2 * n))
            return 1;
    }
    return 0;
} catch (const std::exception& failure) {
    std::fprintf(stderr, "%s\n", failure.what());
    return 1;
}
