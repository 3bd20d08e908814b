// Opens, edits and saves files whose headers grow in one way each, and tells callgrind where each step ends.
#include "support/Lines.h"
#include "support/MemoryFile.h"

#include <VELOxdDll.h>

#include <valgrind/callgrind.h>

#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

struct Shape
{
    const char* name;
    std::string (*header)(int n);
};

std::string Count(const char* key, int n)
{
    return key + ("=" + std::to_string(n)) + "\n";
}

const Shape shapes[] = {
    {"sections", [](int n) { return Lines(n, "[S#]\nkey=value\n"); }},
    {"keys", [](int n) { return "[S]\n" + Lines(n, "Key#=value\n"); }},
    {"sibling info groups",
     [](int n) { return Count("InfoSetCount", n) + Lines(n, "InfoSet#=T#\n") + Lines(n, "[DataSet\\T#]\nx=1\n"); }},
    {"channel groups",
     [](int n) {
         return Count("GroupCount", n) + Lines(n, "Gr#-Count=1\nGr#-Ch0=C#\n") + Lines(n, "[C#]\nPoints=1\nLines=1\n");
     }},
    {"line dimensions",
     [](int n) {
         return "GroupCount=1\nGr0-Count=1\nGr0-Ch0=C\n[C]\nVersion=3\nPoints=1\n" + Count("Lines", n) +
                Lines(n, "LineDim#Range=7\n");
     }},
    {"flat info", [](int n) { return "SetInfos=I\n[I]\n-- G --=-\n" + Lines(n, "item#=value\n"); }},
};

bool Edit(std::uint64_t handle)
{
    const auto group = CreateGroup(handle, 16);
    SetChannelCount(handle, group, 1);
    SetChannelXYDimension(handle, group, 0, 4, 4);
    SetChannelData_PixelRaw(handle, group, 0, 0, 0, 1);
    SetChannelData_PointAxisMin(handle, group, 0, 1);
    const auto info = CreateInfoGroupWithName(handle, "added");
    CreateInfoItem(handle, info, "item", "value");
    AddMetaInfoItemGroup(handle, 1, "added, too");
    DeleteInfoGroup(handle, 0);
    return !VELHasLastError();
}

bool Run(const Shape& shape, int n)
{
    const CMemoryFile file;
    file.Write("[DataSet]\nVersion=2\n" + shape.header(n) + "\r\n#!" + std::string(static_cast<std::size_t>(n), '\0'));
    const auto step = [&](const char* name) {
        const std::string label = std::string(shape.name) + "|" + std::to_string(n) + "|" + name;
        CALLGRIND_DUMP_STATS_AT(label.c_str());
    };
    CALLGRIND_ZERO_STATS;
    const auto handle = OpenOxdFile(file.Path().c_str());
    step("open");
    const bool edited = Edit(handle);
    step("edit");
    SaveOxdFile(handle);
    step("save");
    CloseOxdFile(handle);
    if (!edited || VELHasLastError())
        std::printf("%s: %s\n", shape.name, VELGetLastError());
    return edited && !VELHasLastError();
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2)
        return 2;
    const int n = static_cast<int>(std::strtol(argv[1], nullptr, 10));
    for (const Shape& shape : shapes) {
        if (!Run(shape, n) || !Run(shape, 2 * n))
            return 1;
    }
    return 0;
}
