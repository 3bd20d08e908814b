// A folder for a test, which nobody else uses and which is gone afterwards.
#pragma once

#include <filesystem>
#include <string>

namespace oxd {

// Throws a Failure if it cannot be made. Whatever is in it is removed with it, by an interruption also the folder with
// a temporary file alone.
class TemporaryFolder
{
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    // A name in the folder; both are in UTF-8.
    std::string File(const std::string& name) const;

private:
    std::filesystem::path m_path;
};

} // namespace oxd
