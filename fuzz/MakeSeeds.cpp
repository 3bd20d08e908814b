// Writes what fuzzing starts from: whole files, one of them made by the library, and series of calls.
#include "support/Edits.h"
#include "support/Seeds.h"

#include <VELOxdDll.h>

#include <filesystem>
#include <fstream>

namespace fs = std::filesystem;

namespace {

// Every function three times in the order of the interface, with other arguments each time: 0, which is small and good,
// and then what comes.
std::string Calls(int arguments, int step)
{
    std::string bytes;
    for (int function = 0; function < 94; ++function) {
        bytes.push_back(static_cast<char>(function));
        for (int i = 0; i < 8; ++i)
            bytes.push_back(static_cast<char>(arguments + step * i));
    }
    return bytes;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2)
        return 2;
    const fs::path files = fs::path(argv[1]) / "oxd", calls = fs::path(argv[1]) / "api";
    fs::create_directories(files);
    fs::create_directories(calls);
    for (const Seed& seed : Seeds())
        std::ofstream(files / (seed.name + ".oxd"), std::ios::binary) << seed.bytes;
    const auto made = CreateOxdFile((files / "made.oxd").c_str());
    for (const Edit edit : Edits())
        edit(made);
    SetChannelXYDimension(made, 1, 0, 2, 2); // small, since a fuzzer is fast with small files only
    SaveOxdFile(made);
    for (int step = 0; step < 4; ++step)
        std::ofstream(calls / ("calls-" + std::to_string(step) + ".api"), std::ios::binary) << Calls(step, step);
    return VELHasLastError() ? 1 : 0;
}
