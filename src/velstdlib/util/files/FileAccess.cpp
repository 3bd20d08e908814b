#include "velstdlib/util/files/FileAccess.h"

#include "velstdlib/string/SystemCodePage.h"

#include <system_error>

#ifdef _WIN32
#include <windows.h>
#endif

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

#ifdef _WIN32

namespace {

class CFileHandle
{
public:
    CFileHandle(const fs::path& path, DWORD access, DWORD sharing)
        : m_handle(
              CreateFileW(path.c_str(), access, sharing, nullptr, OPEN_EXISTING, FILE_FLAG_OPEN_REPARSE_POINT, nullptr))
    {
    }
    ~CFileHandle()
    {
        if (IsOpen())
            CloseHandle(m_handle);
    }
    CFileHandle(const CFileHandle&) = delete;
    CFileHandle& operator=(const CFileHandle&) = delete;

    bool IsOpen() const { return m_handle != INVALID_HANDLE_VALUE; }
    DWORD Type() const { return GetFileType(m_handle); }

private:
    HANDLE m_handle;
};

bool IsLink(const fs::path& path)
{
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
}

bool MayBeRemoved(const fs::path& path)
{
    return !IsLink(path) && CFileHandle(path, DELETE | GENERIC_WRITE, 0).IsOpen();
}

} // namespace

bool IsDevice(const std::string& fileName)
{
    constexpr DWORD shared = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    const CFileHandle file(ToPath(fileName), 0, shared);
    return file.IsOpen() && file.Type() != FILE_TYPE_DISK;
}

#else

namespace {

bool MayBeRemoved(const fs::path& path)
{
    std::error_code error;
    return fs::is_regular_file(fs::symlink_status(path, error));
}

} // namespace

bool IsDevice(const std::string& fileName)
{
    std::error_code error;
    return fs::is_other(fs::status(ToPath(fileName), error));
}

#endif

bool RemoveRegularFile(const fs::path& path)
{
    std::error_code error;
    return MayBeRemoved(path) && fs::remove(path, error);
}

} // namespace veltaris::velstdlib::util
