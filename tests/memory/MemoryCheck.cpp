// Opens a file and compares the peak memory of doing so with what it may take.
#include <VELOxdDll.h>

#include <sys/resource.h>

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>

namespace {

constexpr long mebi = 1024; // in kibibytes, as the system counts

struct Case
{
    const char* name;
    const char* header;
    std::uintmax_t dataBytes;
    bool opens;
    long allowedKiB;
};

constexpr Case cases[] = {
    // 512 MiB of 16 bits are 1 GiB in memory.
    {"large",
     "[DataSet]\nVersion=2\nGroupCount=1\nGr0-Count=1\nGr0-Ch0=A\n[A]\nVersion=2\nPoints=16384\nLines=16384\nSaveBits="
     "16\n",
     512U << 20U, true, 1024 * mebi + 16 * mebi},
    {"promises",
     "[DataSet]\nVersion=2\nGroupCount=1\nGr0-Count=1\nGr0-Ch0=A\n[A]\nVersion=2\nPoints=1000000\nLines="
     "1000000\nSaveBits=32\n",
     1000, false, 8 * mebi},
    // A header of a few bytes that asks for all that it may.
    {"groups", "[DataSet]\nVersion=2\nGroupCount=65536\nGr0-Count=1048576\n", 0, true, 64 * mebi},
};

long PeakKiB()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 3)
        return 2;
    for (const Case& c : cases) {
        if (std::strcmp(c.name, argv[1]) != 0)
            continue;
        std::ofstream(argv[2], std::ios::binary) << c.header << "\r\n#!";
        std::filesystem::resize_file(argv[2],
                                     std::filesystem::file_size(argv[2]) + c.dataBytes); // a hole reads as zeros
        const long before = PeakKiB();
        const bool opened = OpenOxdFile(argv[2]) != 0;
        const long grown = PeakKiB() - before;
        std::filesystem::remove(argv[2]);
        std::printf("%s: opened %d, %ld KiB more, %ld KiB allowed\n", c.name, opened, grown, c.allowedKiB);
        return opened == c.opens && grown <= c.allowedKiB ? 0 : 1;
    }
    return 2;
}
