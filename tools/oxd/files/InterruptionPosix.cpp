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
std::atomic<bool> wasAsked = false;
std::array<char, PATH_MAX> temporaryFile{};
static_assert(std::atomic<Stage>::is_always_lock_free && std::atomic<bool>::is_always_lock_free);

void End(int signal)
{
    constexpr int signalBase = 128;
    if (stage == Stage::Committed && !wasAsked.exchange(true)) {
        return;
    }
    if (stage == Stage::Temporary) {
        unlink(temporaryFile.data());
    }
    _exit(signalBase + signal);
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
    const std::string& name = temporary.native();
    if (name.size() >= temporaryFile.size()) {
        throw std::system_error(ENAMETOOLONG, std::generic_category());
    }
    *std::copy(name.begin(), name.end(), temporaryFile.begin()) = '\0';
    stage = Stage::Temporary;
}

void Check()
{
}

void Commit()
{
    stage = Stage::Committed;
}

void Release()
{
    stage = Stage::NoFile;
}

} // namespace oxd::interruption
