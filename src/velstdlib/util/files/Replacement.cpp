#include "velstdlib/util/files/Replacement.h"

#include "velstdlib/util/files/FileAccess.h"

#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace veltaris::velstdlib::util {

#ifdef _WIN32

int OpenReplacement(const std::filesystem::path& path)
{
    RemoveRegularFile(path);
    return _wopen(path.c_str(), _O_WRONLY | _O_CREAT | _O_TRUNC | _O_BINARY, _S_IREAD | _S_IWRITE);
}

#else

namespace {

constexpr mode_t permissionBits = S_IRWXU | S_IRWXG | S_IRWXO;

int Open(const std::filesystem::path& path, int flags, mode_t mode)
{
    int descriptor = 0;
    do // a signal may arrive while a network drive answers
        descriptor = open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC | flags, mode);
    while (descriptor < 0 && errno == EINTR);
    return descriptor;
}

// Only the administrator may give files away; other users may set a group that they belong to.
bool KeepOwnerAndGroup(int descriptor, const struct stat& old)
{
    constexpr auto sameOwner = static_cast<uid_t>(-1);
    return fchown(descriptor, old.st_uid, old.st_gid) == 0 || fchown(descriptor, sameOwner, old.st_gid) == 0;
}

// Members of the old group count among the others of a file that has another group, and the other way round.
mode_t WithoutGroup(mode_t mode)
{
    const mode_t both = (mode >> 3U) & mode & S_IRWXO;
    return (mode & S_IRWXU) | both << 3U | both;
}

// Whatever the system refuses leaves the file narrower than the old one.
void KeepRights(int descriptor, const struct stat& old)
{
    const mode_t mode = old.st_mode & permissionBits;
    const bool keptGroup = KeepOwnerAndGroup(descriptor, old);
    [[maybe_unused]] const int refused = fchmod(descriptor, keptGroup ? mode : WithoutGroup(mode));
}

} // namespace

// Where a file was removed, only a new one will do: another program may have made one with rights of its own meanwhile.
int OpenReplacement(const std::filesystem::path& path)
{
    struct stat old = {};
    const bool isKnown = lstat(path.c_str(), &old) == 0;
    if (!isKnown || !RemoveRegularFile(path))
        return Open(path, O_TRUNC, S_IRUSR | S_IWUSR | S_IRGRP | S_IWGRP | S_IROTH | S_IWOTH);
    const int descriptor = Open(path, O_EXCL, old.st_mode & S_IRWXU);
    if (descriptor >= 0)
        KeepRights(descriptor, old);
    return descriptor;
}

#endif

} // namespace veltaris::velstdlib::util
