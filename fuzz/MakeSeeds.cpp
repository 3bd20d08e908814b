// Writes the seed corpus of the fuzz targets: whole files, one of them made by the library, and scripts of calls.
#include "support/Edits.h"
#include "support/Seeds.h"

#include <VELOxdDll.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

namespace fs = std::filesystem;

namespace {

// Fuzzing is only fast with small inputs, so there are many short scripts.
constexpr int functions = VELOXD_EXPORT_COUNT, functionsOfScript = 3;

void Write(const fs::path& path, std::string_view bytes)
{
    std::ofstream stream(path, std::ios::binary);
    stream.exceptions(std::ios::failbit | std::ios::badbit);
    stream << bytes << std::flush;
}

// Calls OpenOxdFile for a file of version 2, and then some functions in the order of the interface.
std::string Calls(int first, int arguments, int step)
{
    std::string bytes{0, 1};
    for (int function = first; function < std::min(first + functionsOfScript, functions); ++function) {
        bytes.push_back(static_cast<char>(function));
        for (int i = 0; i < 8; ++i)
            bytes.push_back(static_cast<char>(arguments + step * i));
    }
    return bytes;
}

// The arguments are all 0, which is valid, in the first scripts, and grow in different steps in the others.
void WriteCalls(const fs::path& folder)
{
    for (int step = 0; step < 4; ++step) {
        for (int first = 0; first < functions; first += functionsOfScript)
            Write(folder / ("calls-" + std::to_string(step) + "-" + std::to_string(first) + ".api"),
                  Calls(first, step, step));
    }
}

// Writes files of the first section, one of the others, and the samples.
void WriteParts(const fs::path& folder, const std::string& name, std::string_view bytes)
{
    const auto mark = bytes.find("\r\n#!");
    std::size_t begin = bytes.find("\r\n[");
    const std::string_view first = bytes.substr(0, begin), samples = bytes.substr(mark);
    for (int part = 0; begin < mark; ++part) {
        const auto end = std::min(bytes.find("\r\n[", begin + 1), mark);
        Write(folder / (name + "-" + std::to_string(part) + ".oxd"),
              std::string(first).append(bytes.substr(begin, end - begin)).append(samples));
        begin = end;
    }
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2)
        return 2;
    const fs::path files = fs::path(argv[1]) / "oxd", calls = fs::path(argv[1]) / "api";
    fs::create_directories(files);
    fs::create_directories(calls);
    for (const Seed& seed : Seeds()) {
        Write(files / (seed.name + ".oxd"), seed.bytes);
        WriteParts(files, seed.name, seed.bytes);
    }
    const auto made = CreateOxdFile((files / "made.oxd").c_str());
    ApplyEdits(made);
    SetChannelXYDimension(made, 1, 0, 2, 2);
    SaveOxdFile(made);
    WriteCalls(calls);
    return VELHasLastError() ? 1 : 0;
}
