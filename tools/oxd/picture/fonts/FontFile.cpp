#include "oxd/picture/fonts/FontFile.h"

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
#include <unistd.h>

namespace oxd {

namespace {

// The best first: those with many scripts. The ones behind Helvetica are for letters that it lacks.
constexpr std::array<std::string_view, 35> fontFiles{"NotoSans-Regular.ttf",
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
                                                     "Helvetica.ttc",
                                                     "NotoSansCJK-Regular.ttc",
                                                     "NotoSansCJKsc-Regular.otf",
                                                     "NotoSansCJKjp-Regular.otf",
                                                     "NotoSansCJKkr-Regular.otf",
                                                     "SourceHanSans-Regular.ttc",
                                                     "PingFang.ttc",
                                                     "Hiragino Sans GB.ttc",
                                                     "AppleSDGothicNeo.ttc",
                                                     "wqy-microhei.ttc",
                                                     "wqy-zenhei.ttc",
                                                     "DroidSansFallbackFull.ttf",
                                                     "DroidSansFallback.ttf",
                                                     "ipagp.ttf",
                                                     "ipag.ttf",
                                                     "TakaoPGothic.ttf",
                                                     "VL-PGothic-Regular.ttf",
                                                     "NanumGothic.ttf",
                                                     "NotoSansSymbols2-Regular.ttf",
                                                     "NotoSansMath-Regular.ttf",
                                                     "Symbola_hint.ttf",
                                                     "unifont.otf"};

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

// What the search has found so far, one for each of the names. The system's function that visits the files passes
// nothing on but them, and no exception may pass through it. (The standard library's iterators end the process where
// memory is refused.)
std::array<std::string, fontFiles.size()> foundFiles;
bool searchLackedMemory = false;

int Visit(const char* path, const struct stat*, int, FTW* place)
{
    const auto* const known = std::find(fontFiles.begin(), fontFiles.end(), std::string_view(path + place->base));
    if (known == fontFiles.end() || access(path, R_OK) != 0) {
        return 0;
    }
    try {
        std::string& file = foundFiles.at(static_cast<std::size_t>(known - fontFiles.begin()));
        if (file.empty() || path < file) {
            file = path;
        }
    } catch (const std::bad_alloc&) {
        searchLackedMemory = true;
    }
    return searchLackedMemory ? 1 : 0;
}

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

std::vector<std::string> FindFontFiles()
{
    foundFiles = {};
    for (const std::filesystem::path& folder : FontFolders()) {
        Search(folder);
    }
    std::vector<std::string> files(foundFiles.begin(), foundFiles.end());
    std::erase(files, "");
    return files;
}

} // namespace oxd
