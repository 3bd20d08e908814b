#include "oxd/picture/FontFile.h"

#include "oxd/system/Platform.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <new>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include <ftw.h>

namespace oxd {

namespace {

// The best first: those with many scripts.
constexpr std::array<std::string_view, 14> fontFiles{"NotoSans-Regular.ttf",
                                                     "DejaVuSans.ttf",
                                                     "Verdana.ttf",
                                                     "verdana.ttf",
                                                     "Arial.ttf",
                                                     "arial.ttf",
                                                     "LiberationSans-Regular.ttf",
                                                     "NimbusSans-Regular.otf",
                                                     "FreeSans.ttf",
                                                     "Vera.ttf",
                                                     "OpenSans-Regular.ttf",
                                                     "Roboto-Regular.ttf",
                                                     "Ubuntu-R.ttf",
                                                     "Helvetica.ttc"};

std::vector<std::filesystem::path> FontFolders()
{
    std::vector<std::filesystem::path> folders{"/usr/share/fonts", "/usr/local/share/fonts", "/System/Library/Fonts",
                                               "/Library/Fonts"};
    if (const char* const home = std::getenv("HOME")) { // NOLINT(concurrency-mt-unsafe): nobody changes it
        folders.push_back(std::filesystem::path(home) / ".local/share/fonts");
        folders.push_back(std::filesystem::path(home) / ".fonts");
    }
    if (const std::string program = platform::ProgramFile(); !program.empty()) { // brings a font where it must
        folders.push_back(std::filesystem::path(program).parent_path() / "fonts");
    }
    return folders;
}

struct FontFile
{
    std::size_t rank = fontFiles.size(); // in the list
    std::string path;

    bool operator<(const FontFile& other) const { return rank != other.rank ? rank < other.rank : path < other.path; }
};

// What the search has found so far. The system's function that visits the files passes nothing on but them, and no
// exception may pass through it. (The standard library's iterators end the process where memory is refused.)
FontFile best;
bool searchLackedMemory = false;

int Visit(const char* path, const struct stat*, int, FTW* place)
{
    const auto* const known = std::find(fontFiles.begin(), fontFiles.end(), std::string_view(path + place->base));
    try {
        const auto rank = static_cast<std::size_t>(known - fontFiles.begin());
        if (rank <= best.rank && rank < fontFiles.size()) {
            best = std::min(best, FontFile{rank, path});
        }
    } catch (const std::bad_alloc&) {
        searchLackedMemory = true;
    }
    return searchLackedMemory ? 1 : 0;
}

// Another font because of a passing trouble would be another picture.
void Search(const std::filesystem::path& folder)
{
    constexpr int openFolders = 8;
    // NOLINTNEXTLINE(concurrency-mt-unsafe): the tool runs in one thread
    if (nftw(folder.c_str(), Visit, openFolders, FTW_PHYS) < 0 && errno != ENOENT && errno != ENOTDIR) {
        throw std::system_error(errno, std::generic_category(), "fonts cannot be found");
    }
    if (std::exchange(searchLackedMemory, false)) {
        throw std::bad_alloc();
    }
}

} // namespace

std::string FindFontFile()
{
    best = FontFile();
    for (const std::filesystem::path& folder : FontFolders()) {
        Search(folder);
    }
    return best.path;
}

} // namespace oxd
