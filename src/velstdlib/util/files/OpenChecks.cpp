#include "velstdlib/util/files/OpenChecks.h"

#include "velstdlib/util/VELException.h"
#include "velstdlib/util/files/FileAccess.h"

#include <cerrno>
#include <filesystem>
#include <system_error>

namespace veltaris::velstdlib::util {

namespace {

// One system opens a folder like a file without an end, another denies it without a reason.
void CheckIsNoFolder(const std::string& path, const boost::source_location& where)
{
    std::error_code error;
    if (std::filesystem::is_directory(ToPath(path), error))
        ThrowFileOpen(path, EISDIR, where);
}

} // namespace

void CheckReadable(const std::string& path, const boost::source_location& where)
{
    CheckIsNoFolder(path, where);
    if (IsDevice(path)) // opening a pipe would wait for its other end
        ThrowFileOpen(path, EINVAL, where);
}

void CheckWritable(const std::string& path, const boost::source_location& where)
{
    if (IsWriteProtected(path))
        ThrowProtectedOpen(path, where);
    CheckIsNoFolder(path, where);
}

} // namespace veltaris::velstdlib::util
