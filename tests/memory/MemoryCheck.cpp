// Opens a file, in one case saves it as well, and compares the peak memory with what is allowed.
#include "support/Lines.h"

#include <VELOxdDll.h>

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>

#ifdef _WIN32
#include <windows.h>

#include <psapi.h>
#else
#include <sys/resource.h>
#endif

namespace {

struct Case
{
    const char* name = "";
    std::string (*header)() = nullptr;
    std::uintmax_t dataBytes = 0;
    bool opens = false;
    std::uintmax_t samplesInMemory = 0; // bytes that are allowed for samples
    bool savesToo = false;
};

const std::string oneSlot = "GroupCount=1\nGr0-Count=1\nGr0-Ch0=A\n[A]\n";

// `count` slots that all refer to section A.
std::string SharedSection(int count, const std::string& section)
{
    return "GroupCount=1\nGr0-Count=" + std::to_string(count) + "\n" + Lines(count, "Gr0-Ch#=A\n") + "[A]\n" + section;
}

// Links to groups without a section, below a group with a very long name.
std::string LongPaths(std::size_t length, int links)
{
    const std::string name(length, 'a');
    return "InfoSetCount=1\nInfoSet0=" + name + "\n[DataSet\\" + name + "]\nSubSectionCount=" + std::to_string(links) +
           "\n" + Lines(links, "SubSection#=#\n");
}

constexpr std::uintmax_t mebi = 1U << 20U;

const Case cases[] = {
    // 512 MiB of samples of 16 bits take the same size in memory.
    {"large", [] { return oneSlot + "Version=2\nPoints=16384\nLines=16384\nSaveBits=16\n"; }, 512 * mebi, true,
     512 * mebi},
    {"groups", [] { return std::string("GroupCount=65536\nGr0-Count=1048576\n"); }, 0, true},
    {"shared_text", [] { return SharedSection(100'000, "Frame=" + std::string(100'000, 'n') + "\n"); }},
    {"channels", [] { return SharedSection(1'000'000, ""); }},
    {"frames", [] { return "Version=1\nChannelCount=1\nFrameCount=1000000\n" + Lines(1'000'000, "Ch0-Fr#=A\n"); }},
    {"empty_lines",
     [] {
         return oneSlot + "Version=3\nPoints=100000\nLines=2000\n" + Lines(2000, "LineDim#Points=0\n") +
                "LineDim0Points=10\n";
     },
     100'000, true, 400'000, true},
    {"processors",
     [] {
         return "[ProcessorSet]\nProcessorCount=65536\n" + Lines(65536, "Processor#=P\n") +
                "[P]\nInstanceNo=0\nGUID={AB0B4062-81AF-464B-A7F7-75B11891ACF8}\n[ProcessorSet-Slope:0]\n"
                "InputCount=9\n" +
                Lines(9, "Input#Group=0\n");
     },
     0, true},
    {"long_paths", [] { return LongPaths(300'000, 20'000); }},
    {"tiny_groups", [] { return "GroupCount=1000000\n" + Lines(1'000'000, "#=x\n"); }, 0, true},
    {"items", [] { return "SetInfos=I\n[I]\n" + Lines(1'000'000, "#=x\n"); }, 0, true},
};

// What opening a file may take, which is less for files with a small header.
std::uintmax_t AllowedBytes(const Case& c, std::uintmax_t headerBytes)
{
    return c.samplesInMemory + (headerBytes < 4096 && c.samplesInMemory > 0 ? 16 * mebi : 64 * mebi + 40 * headerBytes);
}

std::uintmax_t PeakBytes()
{
#ifdef _WIN32
    PROCESS_MEMORY_COUNTERS counters{};
    GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters);
    return counters.PeakWorkingSetSize;
#else
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<std::uintmax_t>(usage.ru_maxrss) * 1024;
#endif
}

int Check(const Case& c, const std::string& path)
{
    const std::string header = "[DataSet]\nVersion=2\n" + c.header() + "\r\n#!";
    std::ofstream(path, std::ios::binary) << header;
    std::filesystem::resize_file(path, header.size() + c.dataBytes); // the sparse end of the file reads as zeros
    const auto before = PeakBytes();
    const auto handle = OpenOxdFile(path.c_str());
    if (handle != 0 && c.savesToo)
        SaveOxdFile(handle);
    const auto grown = PeakBytes() - before;
    std::filesystem::remove(path);
    const auto allowed = AllowedBytes(c, header.size());
    std::printf("%s: opened %d, %ju MiB more, %ju MiB allowed\n", c.name, handle != 0, grown / mebi, allowed / mebi);
    return (handle != 0) == c.opens && grown <= allowed ? 0 : 1;
}

} // namespace

int main(int argc, char** argv)
{
    for (const Case& c : cases) {
        if (argc == 3 && std::strcmp(c.name, argv[1]) == 0)
            return Check(c, argv[2]);
    }
    return 2;
}
