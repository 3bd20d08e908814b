#include "oxd/files/PlatformFiles.h"

#include <cerrno>
#include <cstdio>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace oxd::platform {

namespace {

constexpr mode_t permissionBits = S_IRWXU | S_IRWXG | S_IRWXO;
constexpr mode_t owners = S_IRUSR | S_IWUSR;
constexpr mode_t everybodys = owners | S_IRGRP | S_IWGRP | S_IROTH | S_IWOTH;

int Create(const std::filesystem::path& file, mode_t mode)
{
    return open(file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
}

// Where the group cannot be kept, group and others get what both had: members of the old group are now among the
// others, and the other way round.
void KeepRights(int descriptor, const struct stat& old)
{
    constexpr auto sameOwner = static_cast<uid_t>(-1);
    constexpr unsigned groupShift = 3;
    const bool isGroupKept = fchown(descriptor, old.st_uid, old.st_gid) == 0 || //
                             fchown(descriptor, sameOwner, old.st_gid) == 0;
    const mode_t both = (old.st_mode >> groupShift) & old.st_mode & S_IRWXO;
    const mode_t narrowed = (old.st_mode & S_IRWXU) | both << groupShift | both;
    [[maybe_unused]] const int refused = fchmod(descriptor, isGroupKept ? old.st_mode & permissionBits : narrowed);
}

void SetOwnersBits(int descriptor, mode_t bits)
{
    struct stat status = {};
    if (fstat(descriptor, &status) == 0 && (status.st_mode & S_IRWXU) != bits) {
        const mode_t others = status.st_mode & (S_IRWXG | S_IRWXO);
        [[maybe_unused]] const int refused = fchmod(descriptor, bits | others);
    }
}

// Some file systems cannot do what is asked for, which is no failure to do it.
bool Sync(int descriptor)
{
    return fsync(descriptor) == 0 || errno == EINVAL || errno == ENOTSUP;
}

// For file systems that have no such step. The file has both names for a moment.
bool LinkAndRemove(const std::filesystem::path& from, const std::filesystem::path& to)
{
    return link(from.c_str(), to.c_str()) == 0 && unlink(from.c_str()) == 0;
}

} // namespace

std::filesystem::path FollowLinks(const std::filesystem::path& path)
{
    constexpr int most = 40; // as the system follows
    std::filesystem::path target = path;
    for (int i = 0; i <= most; ++i) {
        if (!std::filesystem::is_symlink(std::filesystem::symlink_status(target))) {
            return target;
        }
        target = target.parent_path() / std::filesystem::read_symlink(target);
    }
    throw std::filesystem::filesystem_error("links", path,
                                            std::make_error_code(std::errc::too_many_symbolic_link_levels));
}

bool IsWritable(const std::filesystem::path& file)
{
    struct stat status = {};
    if (stat(file.c_str(), &status) != 0) {
        return false;
    }
    if ((status.st_mode & (S_IWUSR | S_IWGRP | S_IWOTH)) == 0) {
        errno = EACCES;
        return false;
    }
    return faccessat(AT_FDCWD, file.c_str(), W_OK, AT_EACCESS) == 0;
}

int CreateReplacement(const std::filesystem::path& file, const std::filesystem::path& replaced)
{
    struct stat old = {};
    const bool exists = lstat(replaced.c_str(), &old) == 0;
    const mode_t mode = exists ? old.st_mode & S_IRWXU : replaced.empty() ? owners : everybodys;
    const int descriptor = Create(file, mode);
    if (descriptor >= 0 && exists) {
        KeepRights(descriptor, old);
    }
    if (descriptor >= 0) {
        SetOwnersBits(descriptor, (mode & S_IRWXU) | owners);
    }
    return descriptor;
}

void FinishRights(int descriptor, const std::filesystem::path& replaced)
{
    struct stat old = {};
    if (lstat(replaced.c_str(), &old) == 0) {
        SetOwnersBits(descriptor, old.st_mode & S_IRWXU);
    } else if (!replaced.empty()) {
        const mode_t kept = umask(0); // there is no other way to ask for it
        umask(kept);
        SetOwnersBits(descriptor, owners & ~kept);
    }
}

int OpenExisting(const std::filesystem::path& file)
{
    return open(file.c_str(), O_WRONLY | O_CLOEXEC);
}

bool Flush(int descriptor)
{
    return Sync(descriptor);
}

bool FlushFolder(const std::filesystem::path& folder)
{
    const int descriptor = open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0) {
        return errno == EACCES; // there are folders that can be written but not read
    }
    const bool isDone = Sync(descriptor);
    const int error = errno;
    close(descriptor);
    errno = error;
    return isDone;
}

bool Move(const std::filesystem::path& from, const std::filesystem::path& to, bool mayReplace)
{
    if (mayReplace) {
        return rename(from.c_str(), to.c_str()) == 0;
    }
#ifdef RENAME_NOREPLACE
    if (renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) {
        return true;
    }
    if (errno != EINVAL && errno != ENOSYS) {
        return false;
    }
#endif
    return LinkAndRemove(from, to);
}

} // namespace oxd::platform
