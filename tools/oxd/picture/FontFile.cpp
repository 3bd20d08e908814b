#include "oxd/picture/FontFile.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <vector>

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
    return folders;
}

struct FontFile
{
    std::size_t rank = fontFiles.size(); // in the list
    std::string path;

    bool operator<(const FontFile& other) const { return rank != other.rank ? rank < other.rank : path < other.path; }
};

// Another font because of a passing trouble would be another picture.
void RequireReadable(const std::error_code& error)
{
    const bool isAbsent = error == std::errc::no_such_file_or_directory || error == std::errc::not_a_directory;
    if (error && !isAbsent) {
        throw std::system_error(error, "fonts cannot be found");
    }
}

FontFile BestIn(const std::filesystem::path& folder)
{
    constexpr auto options = std::filesystem::directory_options::skip_permission_denied;
    FontFile best;
    std::error_code error;
    std::filesystem::recursive_directory_iterator entry(folder, options, error);
    for (; !error && entry != std::filesystem::recursive_directory_iterator(); entry.increment(error)) {
        const auto known = std::find(fontFiles.begin(), fontFiles.end(), entry->path().filename().native());
        const auto rank = static_cast<std::size_t>(known - fontFiles.begin());
        if (rank < fontFiles.size()) {
            best = std::min(best, FontFile{rank, entry->path().native()});
        }
    }
    RequireReadable(error);
    return best;
}

} // namespace

std::string FindFontFile()
{
    FontFile best;
    for (const std::filesystem::path& folder : FontFolders()) {
        best = std::min(best, BestIn(folder));
    }
    return best.path;
}

} // namespace oxd
