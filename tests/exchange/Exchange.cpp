// Writes a set of files to a folder, or prints the content of those in a folder. Two builds of the library must do both
// in the same way.
//
//   exchange write FOLDER
//   exchange read FOLDER
#include "support/Describe.h"
#include "support/Edits.h"

#include <VELOxdDll.h>

#include <array>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>

namespace {

constexpr std::array texts{"plain", "\xC2\xB5m \xE6\xB8\xAC", "\xB5 no UTF-8", "#! = [x]", "a\r\nb", "1,5", ""};
constexpr std::array bitCounts{8, 16, 32};
constexpr std::uint64_t points = 67;

// Adds samples of the whole range in a mixed order.
void AddChannel(std::uint64_t file, int bits, const char* text)
{
    const auto group = CreateGroup(file, bits);
    SetGroupName(file, group, text);
    SetChannelCount(file, group, 1);
    SetChannelXYDimension(file, group, 0, points, 1);
    SetChannelData_SignalAxisUnit(file, group, 0, text);
    SetChannelData_SignalAxisMin(file, group, 0, -1.0 / 3.0 * bits);
    SetChannelData_SignalAxisRange(file, group, 0, 2e-9 / 3.0);
    for (std::uint64_t point = 0; point < points; ++point) {
        const std::uint64_t mixed = (point + 1) * 0x9E3779B97F4A7C15U >> 34U;
        SetChannelData_PixelRaw(file, group, 0, point, 0, static_cast<std::int32_t>(mixed) - 536870912);
    }
}

void Write(std::uint64_t file, const char* text)
{
    ApplyEdits(file);
    for (const int bits : bitCounts)
        AddChannel(file, bits, text);
    CreateInfoItem(file, 1, text, text); // in a flat group
    AddMetaInfoItem(file, AddMetaInfoItemGroup(file, GetMetaInfoTreeRootHandle(file), text), text, text);
    SaveOxdFile(file);
}

void Read(std::uint64_t file)
{
    std::array<std::int32_t, points> raw{};
    std::array<double, points> real{};
    for (auto group = GetGroupCount(file) - bitCounts.size(); group < GetGroupCount(file); ++group) {
        for (int lineOp = 0; lineOp < 6; ++lineOp) {
            GetChannelData_LineRaw(file, group, 0, 0, lineOp, raw.data());
            GetChannelData_LineReal(file, group, 0, 0, lineOp, real.data());
            for (std::uint64_t point = 0; point < points; ++point)
                std::printf("%d %.17g\n", raw.at(point), real.at(point));
        }
    }
    std::fputs(Describe(file).c_str(), stdout);
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 3)
        return 2;
    const bool writes = std::strcmp(argv[1], "write") == 0;
    for (std::size_t number = 0; number < texts.size(); ++number) {
        const std::string name = std::string(argv[2]) + "/" + std::to_string(number) + ".oxd";
        const auto file = writes ? CreateOxdFile(name.c_str()) : OpenOxdFile(name.c_str());
        if (writes)
            Write(file, texts.at(number));
        else
            Read(file);
        CloseOxdFile(file);
    }
    if (!VELHasLastError())
        return 0;
    std::fprintf(stderr, "%s\n", VELGetLastError());
    return 1;
}
