// Writes a set of files to a folder, or prints what is in those that stand there: what two builds of the library must
// do alike.
//
//   exchange write FOLDER
//   exchange read FOLDER
#include "support/Describe.h"

#include <VELOxdDll.h>

#include <array>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>

namespace {

constexpr int operatorCount = 6;
constexpr std::uint64_t points = 67;
constexpr std::uint64_t lines = 5;
constexpr std::array texts{"plain", "\xC2\xB5m \xE6\xB8\xAC", "\xB5 no UTF-8", "#! = [x]", "a\r\nb", "1,5", ""};

// Over the whole range, in no order, and the same everywhere.
std::int32_t Sample(std::uint64_t point, std::uint64_t line)
{
    std::uint64_t mixed = (point + 1) * 0x9E3779B97F4A7C15U ^ (line + 1) * 0xC2B2AE3D27D4EB4FU;
    mixed ^= mixed >> 29U;
    return static_cast<std::int32_t>(mixed % 1073741824U) - 536870912;
}

void AddChannel(std::uint64_t file, int bits, const char* text)
{
    const auto group = CreateGroup(file, bits);
    SetGroupName(file, group, text);
    SetChannelCount(file, group, 2);
    SetChannelXYDimension(file, group, 1, points, lines);
    SetChannelData_LineAxisName(file, group, 1, text);
    SetChannelData_SignalAxisUnit(file, group, 1, text);
    SetChannelData_SignalAxisMin(file, group, 1, -1.0 / 3.0 * bits);
    SetChannelData_SignalAxisRange(file, group, 1, 2e-9 / 3.0);
    for (std::uint64_t line = 0; line < lines; ++line) {
        std::array<std::int32_t, points> samples{};
        for (std::uint64_t point = 0; point < points; ++point)
            samples.at(point) = Sample(point, line);
        SetChannelData_LineRaw(file, group, 1, line, samples.data());
    }
    SetChannelData_PixelReal(file, group, 1, 3, 2, -1.0 / 3.0 * bits + 1e-10);
}

void Write(std::uint64_t file, const char* text)
{
    for (const int bits : {8, 16, 32})
        AddChannel(file, bits, text);
    const auto flat = CreateInfoGroupWithName(file, "Scan");
    CreateInfoItem(file, flat, "Comment", text);
    CreateInfoItem(file, flat, text, "named");
    const auto tree = AddMetaInfoItemGroup(file, GetMetaInfoTreeRootHandle(file), "Tree");
    AddMetaInfoItem(file, AddMetaInfoItemGroup(file, tree, text), "Leaf", text);
    SaveOxdFile(file);
}

void Read(std::uint64_t file)
{
    std::array<std::int32_t, points> raw{};
    std::array<double, points> real{};
    for (std::uint64_t group = 0; group < GetGroupCount(file); ++group) {
        std::printf("%.17g\n", GetChannelData_SignalAxisMin(file, group, 1));
        for (std::uint64_t line = 0; line < lines; ++line) {
            for (int lineOp = 0; lineOp < operatorCount; ++lineOp) {
                GetChannelData_LineRaw(file, group, 1, line, lineOp, raw.data());
                GetChannelData_LineReal(file, group, 1, line, lineOp, real.data());
                for (std::uint64_t point = 0; point < points; ++point)
                    std::printf("%d %.17g\n", raw.at(point), real.at(point));
            }
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
    const bool failed = VELHasLastError();
    if (failed)
        std::fprintf(stderr, "%s\n", VELGetLastError());
    return failed ? 1 : 0;
}
