#include "oxd/files/Interruption.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <climits>
#include <csignal>
#include <string>
#include <system_error>

#include <unistd.h>

namespace oxd::interruption {

namespace {

enum class Stage
{
    NoFile,
    Temporary,
    Committed
};

// A handler may touch nothing but such variables: the heap may be in the middle of a change.
std::atomic<Stage> stage = Stage::NoFile;
std::atomic<bool> hasFolder = false;
std::atomic<bool> isDeferred = false;
std::atomic<int> deferredSignal = 0;
using PathBuffer = std::array<char, PATH_MAX>;
PathBuffer temporaryFile{};
PathBuffer temporaryFolder{};
static_assert(std::atomic<Stage>::is_always_lock_free && std::atomic<bool>::is_always_lock_free &&
              std::atomic<int>::is_always_lock_free);

[[noreturn]] void EndNow(int signal)
{
    constexpr int signalBase = 128;
    Abandon();
    _exit(signalBase + signal);
}

void End(int signal)
{
    const bool isLeftForLater = isDeferred && deferredSignal.exchange(signal) == 0;
    if (stage != Stage::Committed && !isLeftForLater) {
        EndNow(signal);
    }
}

void Store(const std::filesystem::path& path, PathBuffer& buffer)
{
    const std::string& name = path.native();
    if (name.size() >= buffer.size()) {
        throw std::system_error(ENAMETOOLONG, std::generic_category());
    }
    *std::copy(name.begin(), name.end(), buffer.begin()) = '\0';
}

} // namespace

void Heed()
{
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        struct sigaction before = {};
        struct sigaction action = {};
        action.sa_handler = End;
        action.sa_flags = SA_RESTART;
        const bool isIgnored = sigaction(signal, nullptr, &before) == 0 && before.sa_handler == SIG_IGN;
        if (!isIgnored) {
            sigaction(signal, &action, nullptr);
        }
    }
}

void Guard(const std::filesystem::path& temporary)
{
    Store(temporary, temporaryFile);
    stage = Stage::Temporary;
}

void GuardFolder(const std::filesystem::path& folder)
{
    Store(folder, temporaryFolder);
    hasFolder = true;
}

void ReleaseFolder()
{
    hasFolder = false;
}

void Defer()
{
    isDeferred = true;
}

void Check()
{
    if (deferredSignal != 0) {
        EndNow(deferredSignal);
    }
}

void Commit()
{
    stage = Stage::Committed;
}

void Release()
{
    stage = Stage::NoFile;
}

void Abandon()
{
    if (stage == Stage::Temporary) {
        unlink(temporaryFile.data());
    }
    if (hasFolder) {
        rmdir(temporaryFolder.data());
    }
}

} // namespace oxd::interruption
