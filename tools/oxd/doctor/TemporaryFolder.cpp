#include "oxd/doctor/TemporaryFolder.h"

#include "oxd/files/Interruption.h"
#include "oxd/system/Failure.h"

#include <random>

namespace oxd {

namespace {

// Fails, rather than uses a folder that is there, since somebody else may own that.
std::error_code MakeFolder(const std::filesystem::path& path)
{
    std::error_code error;
    interruption::GuardFolder(path);
    if (!std::filesystem::create_directory(path, error) && !error) {
        error = std::make_error_code(std::errc::file_exists);
    }
    if (error) {
        interruption::ReleaseFolder();
    }
    return error;
}

} // namespace

TemporaryFolder::TemporaryFolder()
{
    std::error_code error;
    const std::filesystem::path parent = std::filesystem::temp_directory_path(error);
    std::random_device random;
    for (int attempt = 0; attempt < 10 && (m_path.empty() || error == std::errc::file_exists); ++attempt) {
        m_path = parent / ("oxd-doctor-" + std::to_string(random()));
        error = error && error != std::errc::file_exists ? error : MakeFolder(m_path);
    }
    if (error) {
        throw Failure(ExitCode::CannotWrite, "temporary folder", error.message());
    }
}

TemporaryFolder::~TemporaryFolder()
{
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
    interruption::ReleaseFolder();
}

std::string TemporaryFolder::File(const std::string& name) const
{
    const std::u8string path = (m_path / std::u8string(name.begin(), name.end())).u8string();
    return {path.begin(), path.end()};
}

} // namespace oxd
