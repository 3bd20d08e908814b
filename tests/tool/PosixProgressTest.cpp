// The bar that a command shows on a terminal, which a pseudo-terminal stands for.
#include "oxd/system/Progress.h"

#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <cstdlib>
#include <string>
#include <thread>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

namespace {

// What is written to the standard error while this lives goes to a terminal of its own.
class Terminal
{
public:
    Terminal() : m_own(dup(STDERR_FILENO)), m_master(posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK))
    {
        grantpt(m_master);
        unlockpt(m_master);
        const int slave = open(ptsname(m_master), O_RDWR | O_NOCTTY);
        dup2(slave, STDERR_FILENO);
        close(slave);
    }
    ~Terminal()
    {
        dup2(m_own, STDERR_FILENO);
        close(m_own);
        close(m_master);
    }
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;

    // All that was written since: it arrives in pieces, the last of which nothing follows.
    std::string Shown() const
    {
        constexpr int patience = 200; // milliseconds
        std::string shown;
        std::array<char, 1024> buffer{};
        for (pollfd waiting{m_master, POLLIN, 0}; poll(&waiting, 1, patience) > 0;) {
            const ssize_t count = read(m_master, buffer.data(), buffer.size());
            if (count <= 0)
                break;
            shown.append(buffer.data(), static_cast<std::size_t>(count));
        }
        return shown;
    }

private:
    int m_own;
    int m_master;
};

TEST(PosixProgressTest, FillsABarAndRemovesItInTheEnd)
{
    const Terminal terminal;
    {
        oxd::Progress progress(8);
        progress.Advance();
        std::this_thread::sleep_for(std::chrono::milliseconds(600));
        terminal.Shown(); // nothing, unless the machine is slow
        progress.Advance();
        progress.Advance();
        EXPECT_EQ(terminal.Shown(), "\r[" + std::string(10, '#') + std::string(30, ' ') + "] 25 %\r[" +
                                        std::string(14, '#') + std::string(26, ' ') + "] 37 %");
        for (int step = 3; step < 7; ++step)
            progress.Advance();
        EXPECT_TRUE(terminal.Shown().ends_with("\r[" + std::string(34, '#') + std::string(6, ' ') + "] 87 %"));
    }
    EXPECT_EQ(terminal.Shown(), "\r" + std::string(48, ' ') + "\r");
}

} // namespace
