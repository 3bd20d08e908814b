// Replays inputs with a fuzz target, without a fuzzer, so that what was fixed stays fixed.
//
//   PROGRAM .EXTENSION FOLDER...    every file with the extension; a folder without any is an error
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int main(int argc, char** argv)
try {
    if (argc < 3)
        throw std::runtime_error("No folder");
    for (int i = 2; i < argc; ++i) {
        int inputs = 0;
        for (const auto& entry : std::filesystem::directory_iterator(argv[i])) {
            if (entry.path().extension() != argv[1])
                continue;
            std::ifstream stream(entry.path(), std::ios::binary);
            const std::string bytes(std::istreambuf_iterator<char>(stream), {});
            std::printf("%s\n", entry.path().filename().c_str());
            std::fflush(stdout); // the last name printed is that of the input that crashes
            ++inputs;
            LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
        }
        if (inputs == 0)
            throw std::runtime_error("No inputs in " + std::string(argv[i]));
    }
} catch (const std::exception& e) {
    std::printf("%s\n", e.what());
    return 1;
}
