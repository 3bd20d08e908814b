// A folder for the files of one run, removed with everything in it.
#pragma once

#include <filesystem>
#include <string>

namespace bench {

class CScratch
{
public:
    // Below `parent`, or, when that is empty, below the system's folder for temporary files.
    explicit CScratch(const std::filesystem::path& parent = {});
    CScratch(const CScratch&) = delete;
    CScratch& operator=(const CScratch&) = delete;
    ~CScratch();

    std::string Path(const std::string& name) const { return (m_folder / name).string(); }

private:
    std::filesystem::path m_folder;
};

} // namespace bench
