#include "oxd/system/Platform.h"

#include <cerrno>
#include <csignal>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace oxd::platform {

namespace {

int OpenNowhere()
{
    return open("/dev/null", O_RDWR | O_CLOEXEC);
}

} // namespace

std::optional<std::string> FileName(const std::string& name)
{
    return name;
}

void IgnoreBrokenPipes()
{
    (void)std::signal(SIGPIPE, SIG_IGN);
}

int TakeStandardOutput()
{
    // Not one of the standard three, even if some of these are closed.
    const int own = fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    int nowhere = OpenNowhere();
    while (nowhere >= 0 && nowhere <= STDERR_FILENO) { // stays where a stream is closed, so that no file gets there
        nowhere = OpenNowhere();
    }
    dup2(nowhere, STDOUT_FILENO);
    close(nowhere);
    return own;
}

void ShowStrayOutput()
{
    dup2(STDERR_FILENO, STDOUT_FILENO);
}

int CreateFileFor(const std::string& name)
{
    constexpr mode_t readAndWrite = 0666;
    return open(name.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, readAndWrite);
}

bool IsRegularFile(int descriptor)
{
    struct stat status = {};
    return fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
}

bool IsTerminal(int descriptor)
{
    return isatty(descriptor) == 1;
}

bool WriteAll(int descriptor, std::string_view text)
{
    while (!text.empty()) {
        const ssize_t written = write(descriptor, text.data(), text.size());
        if (written >= 0) {
            text.remove_prefix(static_cast<std::size_t>(written));
        } else if (errno != EINTR) {
            return false;
        }
    }
    return true;
}

bool Close(int descriptor)
{
    return close(descriptor) == 0;
}

} // namespace oxd::platform
