// oxd scan where the system has signals and pipes.
#include "tool/ToolTest.h"

#include <array>
#include <csignal>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

using PosixScanTest = ToolTest;

// It waits for a reader of the pipe in the middle of a line when the interruption comes, and writes that line to its
// end.
TEST_F(PosixScanTest, WritesWholeLinesOnlyWhenInterrupted)
{
    std::filesystem::create_directory("tree");
    for (int i = 0; i < 500; ++i)
        std::filesystem::create_hard_link("sample.oxd", "tree/" + std::to_string(i) + ".oxd");
    std::array<int, 2> ends{};
    ASSERT_EQ(pipe2(ends.data(), O_CLOEXEC), 0);
    (void)std::signal(SIGINT, SIG_DFL); // the tests may have been started to ignore it
    const pid_t tool = fork();
    if (tool == 0) {
        dup2(ends[1], STDOUT_FILENO);
        execl(OXD_TOOL, "oxd", "scan", "tree", nullptr);
        _exit(1);
    }
    close(ends[1]);
    std::string read(1, '\0');
    ASSERT_EQ(::read(ends[0], read.data(), 1), 1); // it is writing
    kill(tool, SIGINT);
    std::array<char, 4096> buffer{};
    for (ssize_t count = 0; (count = ::read(ends[0], buffer.data(), buffer.size())) > 0;)
        read.append(buffer.data(), static_cast<std::size_t>(count));
    close(ends[0]);
    int status = 0;
    waitpid(tool, &status, 0);
    EXPECT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 130);
    EXPECT_TRUE(read.ends_with("}\n"));
    EXPECT_LT(std::ranges::count(read, '\n'), 500);
}
