// A folder for the files of one benchmark, which is removed with everything in it.
#pragma once

#include <filesystem>
#include <string>

namespace bench {

// Owns the folder. There is one at a time in a process, since the folder is named for the process.
class CScratch
{
public:
    // Creates the folder below `parent`, or below the system's folder for temporary files if `parent` is empty.
    explicit CScratch(const std::filesystem::path& parent = {});
    CScratch(const CScratch&) = delete;
    CScratch& operator=(const CScratch&) = delete;
    ~CScratch();

    std::string Path(const std::string& name) const { return (m_folder / name).string(); }

private:
    std::filesystem::path m_folder;
};

} // namespace bench
