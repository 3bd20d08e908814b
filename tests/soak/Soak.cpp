// Opens, edits, saves and closes a file over and over: neither memory nor the number of descriptors may grow.
#include "support/Edits.h"

#include <VELOxdDll.h>

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>

namespace fs = std::filesystem;

namespace {

constexpr std::int64_t allowedKiB = 512; // for pages that the allocator touches late

struct Usage
{
    std::int64_t memoryKiB;
    std::int64_t descriptors;
};

Usage Measure()
{
    std::ifstream status("/proc/self/statm");
    std::int64_t allPages = 0, pages = 0;
    status >> allPages >> pages;
    return {4 * pages, std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator())};
}

// Edits and saves the file, which the next cycle opens again.
bool Cycle(const std::string& path)
{
    const auto handle = OpenOxdFile(path.c_str());
    SetGroupName(handle, 0, "renamed");
    SetChannelXYDimension(handle, 1, 0, 100, 3);
    SetChannelData_PixelRaw(handle, 0, 0, 0, 0, 1);
    SetChannelData_SignalAxisUnit(handle, 0, 0, "V");
    DeleteInfoGroup(handle, CreateInfoGroupWithName(handle, "unwanted"));
    SetGroupName(handle, 77, "fails");
    const bool failed = std::string(VELGetLastError()).find("Index: 77") == std::string::npos;
    SaveOxdFile(handle);
    CloseOxdFile(handle);
    return handle == 1 && !failed && !VELHasLastError();
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 3)
        return 2;
    const std::int64_t cycles = std::strtoll(argv[1], nullptr, 10);
    if (cycles < 10)
        return 2; // nothing would be compared
    const std::string path = argv[2];
    const auto made = CreateOxdFile(path.c_str());
    ApplyEdits(made);
    SaveOxdFile(made);
    CloseOxdFile(made);

    Usage first{};
    for (std::int64_t i = 0; i <= cycles; ++i) {
        if (!Cycle(path)) {
            std::cout << "cycle " << i << ": " << VELGetLastError() << '\n';
            return 1;
        }
        if (i == cycles / 10) // when everything that is allocated once has been allocated
            first = Measure();
    }
    const Usage last = Measure();
    fs::remove(path);
    std::cout << cycles << " cycles: " << last.memoryKiB << " KiB and " << last.descriptors << " descriptors, at first "
              << first.memoryKiB << " KiB and " << first.descriptors << '\n';
    return last.memoryKiB > first.memoryKiB + allowedKiB || last.descriptors != first.descriptors ? 1 : 0;
}
