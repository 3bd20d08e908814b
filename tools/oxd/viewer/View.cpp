#include "oxd/viewer/View.h"

#include "oxd/files/FilePath.h"
#include "oxd/provenance/Origin.h"
#include "oxd/system/Failure.h"
#include "oxd/system/Platform.h"
#include "oxd/viewer/WritePage.h"

#include <filesystem>
#include <random>

namespace oxd {

namespace {

// Fails, rather than uses a folder that is there, since somebody else may own that.
std::filesystem::path MakeFolder()
{
    std::error_code error;
    const std::filesystem::path parent = std::filesystem::temp_directory_path(error);
    std::random_device random;
    std::filesystem::path folder;
    for (int attempt = 0; attempt < 10 && !error && folder.empty(); ++attempt) {
        const std::filesystem::path wanted = parent / ("oxd-view-" + std::to_string(random()));
        folder = std::filesystem::create_directory(wanted, error) ? wanted : std::filesystem::path();
    }
    if (!folder.empty()) {
        std::filesystem::permissions(folder, std::filesystem::perms::owner_all, error);
    }
    if (error || folder.empty()) {
        throw Failure(ExitCode::CannotWrite, "temporary folder", error ? error.message() : "cannot be made");
    }
    return folder;
}

} // namespace

std::string MakePage(const std::string& file, Destination place)
{
    if (!place.name.empty()) {
        WritePage(file, place);
        return place.name;
    }
    const std::filesystem::path folder = MakeFolder();
    place.name = ToUtf8(folder / ToPath(NameWithoutFolder(file) + ".html"));
    try {
        WritePage(file, place);
    } catch (...) {
        std::error_code ignored;
        std::filesystem::remove_all(folder, ignored);
        throw;
    }
    return place.name;
}

void OpenPage(const std::string& page)
{
    std::error_code error;
    const std::string whole = ToUtf8(std::filesystem::absolute(ToPath(page), error));
    if (error || !platform::OpenInBrowser(whole)) {
        throw Failure(ExitCode::CannotOpen, page, "is written, but the system opens no browser for it");
    }
}

} // namespace oxd
