#include "support/Scratch.h"

#include <unistd.h>

#include <system_error>

namespace bench {

namespace fs = std::filesystem;

CScratch::CScratch(const fs::path& parent)
    : m_folder((parent.empty() ? fs::temp_directory_path() : parent) / ("veloxd-bench-" + std::to_string(getpid())))
{
    fs::create_directories(m_folder);
}

CScratch::~CScratch()
{
    std::error_code ignored;
    fs::remove_all(m_folder, ignored);
}

} // namespace bench
