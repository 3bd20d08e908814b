#include "velstdlib/util/FileAccess.h"

#include <filesystem>
#include <system_error>

namespace veltaris::velstdlib::util {

namespace fs = std::filesystem;

bool IsWriteProtected(const std::string& path)
{
    constexpr auto writing = fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write;
    std::error_code error;
    const auto status = fs::status(path, error);
    return fs::exists(status) && (status.permissions() & writing) == fs::perms::none;
}

} // namespace veltaris::velstdlib::util
