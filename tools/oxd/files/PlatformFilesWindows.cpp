#include "oxd/files/PlatformFiles.h"

#include <array>
#include <cerrno>
#include <string>

#include <windows.h>

#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>

namespace oxd::platform {

namespace {

// Leaves what went wrong in errno.
bool Succeed(BOOL success)
{
    if (success != FALSE) {
        return true;
    }
    switch (GetLastError()) {
    case ERROR_FILE_EXISTS:
    case ERROR_ALREADY_EXISTS:
        errno = EEXIST;
        break;
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
        errno = ENOENT;
        break;
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
        errno = ENOSPC;
        break;
    case ERROR_ACCESS_DENIED:
    case ERROR_SHARING_VIOLATION:
    case ERROR_WRITE_PROTECT:
        errno = EACCES;
        break;
    default:
        errno = EIO;
        break;
    }
    return false;
}

bool IsLink(const std::filesystem::path& path)
{
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
}

} // namespace

// A link that leads nowhere is taken for the file itself.
std::filesystem::path FollowLinks(const std::filesystem::path& path)
{
    constexpr DWORD shared = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    constexpr DWORD longest = 32768;
    if (!IsLink(path)) {
        return path;
    }
    const HANDLE file =
        CreateFileW(path.c_str(), 0, shared, nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        return path;
    }
    std::wstring name(longest, L'\0');
    name.resize(GetFinalPathNameByHandleW(file, name.data(), longest, 0));
    CloseHandle(file);
    return name.empty() ? path : std::filesystem::path(name);
}

bool IsWritable(const std::filesystem::path& file)
{
    constexpr int writing = 2;
    return _waccess(file.c_str(), writing) == 0;
}

// The file has the rights that its folder gives.
int CreateReplacement(const std::filesystem::path& file, const std::filesystem::path&)
{
    return _wopen(file.c_str(), _O_WRONLY | _O_CREAT | _O_EXCL | _O_BINARY, _S_IREAD | _S_IWRITE);
}

void FinishRights(int, const std::filesystem::path&)
{
}

int OpenExisting(const std::filesystem::path& file)
{
    return _wopen(file.c_str(), _O_WRONLY | _O_BINARY);
}

bool Flush(int descriptor)
{
    // NOLINTNEXTLINE(performance-no-int-to-ptr): that is how the C library gives a handle
    return Succeed(FlushFileBuffers(reinterpret_cast<HANDLE>(_get_osfhandle(descriptor))));
}

// The move writes through.
bool FlushFolder(const std::filesystem::path&)
{
    return true;
}

bool Move(const std::filesystem::path& from, const std::filesystem::path& to, bool mayReplace)
{
    const DWORD replacing = mayReplace ? MOVEFILE_REPLACE_EXISTING : 0;
    return Succeed(MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_WRITE_THROUGH | replacing));
}

} // namespace oxd::platform
