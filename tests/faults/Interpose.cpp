// The dynamic linker prefers the definitions of an executable to those of its libraries.
#include "Interpose.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>

extern "C" {
// Other names of the C library's own allocation functions.
void* __libc_malloc(std::size_t size);                          // NOLINT(bugprone-reserved-identifier)
void* __libc_calloc(std::size_t count, std::size_t size);       // NOLINT(bugprone-reserved-identifier)
void* __libc_realloc(void* block, std::size_t size);            // NOLINT(bugprone-reserved-identifier)
void* __libc_memalign(std::size_t alignment, std::size_t size); // NOLINT(bugprone-reserved-identifier)
void __libc_free(void* block);                                  // NOLINT(bugprone-reserved-identifier)
}

namespace faults {

namespace {

bool armed = false;
Plan current;
Count counted;
std::int64_t liveBlocks = 0;
std::int64_t livePages = 0;

// Counts a call. Returns whether the planned effect applies to it.
bool Strikes(Kind kind)
{
    if (!armed || kind != current.kind)
        return false;
    const auto index = counted.calls++;
    const bool strikes = index == current.at || (index > current.at && current.effect == Effect::FailOn);
    counted.struck |= strikes;
    if (strikes && current.effect == Effect::Kill)
        std::raise(SIGKILL);
    if (strikes && current.effect == Effect::CtrlC) {
        std::raise(SIGINT);
        std::raise(SIGINT); // the impatient press it twice
    }
    return strikes && current.effect != Effect::CtrlC;
}

template <class Allocate>
void* AllocateOrFail(Allocate allocate)
{
    if (Strikes(Kind::Memory)) {
        errno = ENOMEM;
        return nullptr;
    }
    void* const block = allocate();
    liveBlocks += block ? 1 : 0;
    return block;
}

// Transfers up to `size` bytes by move(size), unless the plan says otherwise.
template <class Move>
ssize_t Transfer(std::size_t size, int failure, Move move)
{
    if (!Strikes(Kind::File))
        return move(size);
    switch (current.effect) {
    case Effect::Shorten:
        return move((size + 1) / 2);
    case Effect::KillWithin:
        move((size + 1) / 2);
        std::raise(SIGKILL);
        [[fallthrough]];
    default:
        errno = current.effect == Effect::Interrupt ? EINTR : failure;
        return -1;
    }
}

// Calls that transfer no bytes can only fail; being interrupted is one way to.
bool FailsAltogether(int failure)
{
    return Transfer(0, failure, [](std::size_t) { return ssize_t{0}; }) < 0;
}

// Whether it is of the file to which the standard error goes.
bool IsStandardError(int descriptor)
{
    struct stat file = {};
    struct stat messages = {};
    return fstat(descriptor, &file) == 0 && fstat(STDERR_FILENO, &messages) == 0 && file.st_ino == messages.st_ino &&
           file.st_dev == messages.st_dev;
}

std::int64_t PagesOf(std::size_t size)
{
    constexpr std::size_t page = 4096;
    return static_cast<std::int64_t>((size + page - 1) / page);
}

template <class Function>
Function* Next(const char* name)
{
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

} // namespace

void Arm(const Plan& plan)
{
    current = plan;
    counted = {};
    armed = true;
}

Count Disarm()
{
    armed = false;
    return counted;
}

std::int64_t LiveBlocks()
{
    return liveBlocks + livePages;
}

} // namespace faults

using namespace faults;

// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name): the C library's own begin with underscores
extern "C" {

void* malloc(std::size_t size)
{
    return AllocateOrFail([&] { return __libc_malloc(size); });
}

void* calloc(std::size_t count, std::size_t size)
{
    return AllocateOrFail([&] { return __libc_calloc(count, size); });
}

void* aligned_alloc(std::size_t alignment, std::size_t size)
{
    return AllocateOrFail([&] { return __libc_memalign(alignment, size); });
}

void* realloc(void* block, std::size_t size)
{
    liveBlocks -= block ? 1 : 0; // counted again below, moved or not
    void* const moved = AllocateOrFail([&] { return __libc_realloc(block, size); });
    liveBlocks += block && !moved ? 1 : 0;
    return moved;
}

void free(void* block)
{
    liveBlocks -= block ? 1 : 0;
    __libc_free(block);
}

// Large blocks of memory are mapped by pages, some of which are returned early.
void* mmap(void* address, std::size_t size, int protection, int flags, int descriptor, off_t offset)
{
    if (Strikes(Kind::Memory)) {
        errno = ENOMEM;
        return MAP_FAILED; // NOLINT(cppcoreguidelines-pro-type-cstyle-cast): the system's macro
    }
    livePages += PagesOf(size);
    return Next<void*(void*, std::size_t, int, int, int, off_t)>("mmap")(address, size, protection, flags, descriptor,
                                                                         offset);
}

int munmap(void* address, std::size_t size)
{
    livePages -= PagesOf(size);
    return Next<int(void*, std::size_t)>("munmap")(address, size);
}

ssize_t read(int descriptor, void* bytes, std::size_t size)
{
    const bool struckBefore = counted.struck;
    const ssize_t got =
        Transfer(size, EIO, [&](std::size_t part) { return syscall(SYS_read, descriptor, bytes, part); });
    counted.struckRead |= counted.struck && !struckBefore;
    return got;
}

ssize_t write(int descriptor, const void* bytes, std::size_t size)
{
    return Transfer(size, ENOSPC, [&](std::size_t part) { return syscall(SYS_write, descriptor, bytes, part); });
}

off64_t lseek64(int descriptor, off64_t offset, int from)
{
    return FailsAltogether(EIO) ? -1 : syscall(SYS_lseek, descriptor, offset, from);
}

FILE* fopen64(const char* path, const char* mode)
{
    return FailsAltogether(EMFILE) ? nullptr : Next<FILE*(const char*, const char*)>("fopen64")(path, mode);
}

int open(const char* path, int flags, ...)
{
    va_list rest;
    va_start(rest, flags);
    const auto mode = (flags & O_CREAT) != 0 ? va_arg(rest, mode_t) : mode_t{0};
    va_end(rest);
    return FailsAltogether(EMFILE) ? -1 : static_cast<int>(syscall(SYS_openat, AT_FDCWD, path, flags, mode));
}

// Another name of the same.
int open64(const char* path, int flags, ...) __attribute__((alias("open")));

int fchown(int descriptor, uid_t owner, gid_t group)
{
    return FailsAltogether(EPERM) ? -1 : static_cast<int>(syscall(SYS_fchown, descriptor, owner, group));
}

int fchmod(int descriptor, mode_t mode)
{
    return FailsAltogether(EPERM) ? -1 : static_cast<int>(syscall(SYS_fchmod, descriptor, mode));
}

// The descriptor is closed even if the call fails. What was written is lost then, but for messages: a file system may
// tell only now that it has no room.
int close(int descriptor)
{
    const bool fails = FailsAltogether(EIO);
    const int error = errno;
    if (fails && !IsStandardError(descriptor))
        syscall(SYS_ftruncate, descriptor, 0);
    errno = error;
    const auto result = static_cast<int>(syscall(SYS_close, descriptor));
    return fails ? -1 : result;
}

int fclose(FILE* file)
{
    const bool fails = FailsAltogether(EIO);
    const int result = Next<int(FILE*)>("fclose")(file);
    return fails ? EOF : result;
}

int fsync(int descriptor)
{
    return FailsAltogether(EIO) ? -1 : static_cast<int>(syscall(SYS_fsync, descriptor));
}

int rename(const char* from, const char* to)
{
    return FailsAltogether(EIO) ? -1 : static_cast<int>(syscall(SYS_rename, from, to));
}

int unlink(const char* path)
{
    return FailsAltogether(EIO) ? -1 : static_cast<int>(syscall(SYS_unlink, path));
}

int remove(const char* path)
{
    return FailsAltogether(EIO) ? -1 : Next<int(const char*)>("remove")(path);
}

int stat(const char* path, struct stat* status)
{
    return FailsAltogether(EIO) ? -1 : Next<int(const char*, struct stat*)>("stat")(path, status);
}

int lstat(const char* path, struct stat* status)
{
    return FailsAltogether(EIO) ? -1 : Next<int(const char*, struct stat*)>("lstat")(path, status);
}
}
// NOLINTEND(readability-inconsistent-declaration-parameter-name)
