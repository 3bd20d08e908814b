// Runs a fuzz target over the files of an extension in some folders, without a fuzzer: what was found stays fixed. A
// folder without such files is an error, as its name is a mistake.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int main(int argc, char** argv)
try {
    for (int i = 2; i < argc; ++i) {
        bool isEmpty = true;
        for (const auto& entry : std::filesystem::directory_iterator(argv[i])) {
            if (entry.path().extension() != argv[1])
                continue;
            isEmpty = false;
            std::ifstream stream(entry.path(), std::ios::binary);
            const std::string bytes(std::istreambuf_iterator<char>(stream), {});
            std::printf("%s\n", entry.path().filename().c_str());
            std::fflush(stdout); // the last name is that of the file that ends the program
            LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
        }
        if (isEmpty) {
            std::printf("No %s files in %s\n", argv[1], argv[i]);
            return 1;
        }
    }
} catch (const std::exception& e) {
    std::printf("%s\n", e.what());
    return 1;
}
