#include "velstdlib/util/FileAccess.h"

#include "velstdlib/string/SystemCodePage.h"

#include <system_error>

namespace veltaris::velstdlib::util {

namespace fs = std::filesystem;

std::filesystem::path ToPath(const std::string& fileName)
{
#ifdef _WIN32
    return string::SystemCodePageToWide(fileName);
#else
    return fileName;
#endif
}

bool IsWriteProtected(const std::string& fileName)
{
    constexpr auto writing = fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write;
    std::error_code error;
    const auto status = fs::status(ToPath(fileName), error);
    return fs::exists(status) && (status.permissions() & writing) == fs::perms::none;
}

} // namespace veltaris::velstdlib::util
