#include "compare/Memory.h"

#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <fstream>
#include <stdexcept>

namespace bench {

namespace {

std::uint64_t ResidentBytes()
{
    std::ifstream status("/proc/self/statm");
    std::uint64_t pages = 0;
    status >> pages >> pages;
    return pages * static_cast<std::uint64_t>(sysconf(_SC_PAGESIZE));
}

} // namespace

std::uint64_t MemoryTakenBy(const std::function<bool()>& take)
{
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0)
        throw std::runtime_error("No pipe");
    const pid_t child = fork();
    if (child == 0) {
        const std::uint64_t before = ResidentBytes();
        const std::uint64_t grown = take() ? ResidentBytes() - before : 0;
        _exit(write(ends[1], &grown, sizeof grown) == sizeof grown ? 0 : 1);
    }
    close(ends[1]);
    std::uint64_t grown = 0;
    const bool answered = read(ends[0], &grown, sizeof grown) == sizeof grown && grown > 0;
    close(ends[0]);
    waitpid(child, nullptr, 0);
    if (!answered)
        throw std::runtime_error("No memory was measured");
    return grown;
}

} // namespace bench
