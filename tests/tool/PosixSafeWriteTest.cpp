// What is written where there are links, permission bits, pipes and signals.
#include "tool/ToolTest.h"

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <thread>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

mode_t ModeOf(const std::string& file)
{
    struct stat status = {};
    EXPECT_EQ(stat(file.c_str(), &status), 0);
    return status.st_mode & 07777;
}

// The tool in a process of its own, when it has made something in `folder` for temporary files, or has ended. `words`
// ends with null.
pid_t Start(std::vector<const char*> words, const char* folder)
{
    const pid_t child = fork();
    if (child == 0) {
        setenv("TMPDIR", folder, 1); // NOLINT(concurrency-mt-unsafe): there is one thread
        execv(OXD_TOOL,
              const_cast<char**>(words.data())); // NOLINT(cppcoreguidelines-pro-type-const-cast): as it is declared
        _exit(1);
    }
    siginfo_t ended = {};
    while (std::filesystem::is_empty(folder) && ended.si_pid == 0) {
        std::this_thread::yield();
        waitid(P_PID, static_cast<id_t>(child), &ended, WEXITED | WNOHANG | WNOWAIT);
    }
    return child;
}

// Waits for the reader of a pipe.
pid_t StartWriting(const char* pipe, const char* folder)
{
    return Start({"oxd", "set", "sample.oxd", "Scan/Lines", "1", "-o", pipe, nullptr}, folder);
}

} // namespace

using PosixSafeWriteTest = ToolTest;

TEST_F(PosixSafeWriteTest, WritesThroughLinks)
{
    std::filesystem::create_directory("folder");
    WriteBytes("folder/old.oxd", "old");
    std::filesystem::create_symlink("old.oxd", "folder/near.oxd");
    std::filesystem::create_symlink("folder/near.oxd", "far.oxd");
    std::filesystem::create_symlink("folder/new.oxd", "dangling.oxd");
    std::filesystem::create_symlink("circle.oxd", "circle.oxd");
    std::filesystem::create_symlink("folder/long.oxd", "0");
    for (int i = 1; i < 40; ++i) // as many as the system follows
        std::filesystem::create_symlink(std::to_string(i - 1), std::to_string(i));
    for (const auto& [link, file] :
         {std::pair("far.oxd", "folder/old.oxd"), {"dangling.oxd", "folder/new.oxd"}, {"39", "folder/long.oxd"}}) {
        ResultsOf(std::string("make-sample ") + link);
        EXPECT_TRUE(std::filesystem::is_symlink(link));
        EXPECT_FALSE(std::filesystem::is_symlink(file));
        EXPECT_EQ(ReadBytes(file), ReadBytes("sample.oxd"));
    }
    ExpectFailure("make-sample circle.oxd", 5, "oxd: circle.oxd: Too many levels of symbolic links");
}

TEST_F(PosixSafeWriteTest, KeepsTheRightsOfTheOldFileAndRefusesAProtectedOne)
{
    const mode_t before = umask(027);
    for (const std::string command : {"make-sample ", "export sample.oxd --group ForwardScan --channel 0 -o "}) {
        for (const auto& [mask, mode] : {std::pair(0222, 0444), {0777, 0}, {027, 0640}}) {
            std::filesystem::remove("new.csv");
            umask(static_cast<mode_t>(mask));
            ResultsOf(command + "new.csv");
            EXPECT_EQ(ModeOf("new.csv"), mode) << command;
        }
        for (const mode_t mode : {0600, 0666, 0764}) {
            chmod("new.csv", mode);
            ResultsOf(command + "new.csv");
            EXPECT_EQ(ModeOf("new.csv"), mode) << command;
        }
        WriteBytes("new.csv", "old");
        chmod("new.csv", 0444);
        ExpectFailure(command + "new.csv", 5, "oxd: new.csv: Permission denied\n");
        EXPECT_EQ(ReadBytes("new.csv"), "old");
        std::filesystem::remove("new.csv");
    }
    umask(before);
    ExpectFailure("make-sample /sys/sample.oxd", 5, "oxd: /sys/sample.oxd: folder /sys: ");
}

TEST_F(PosixSafeWriteTest, GivesTheNewGroupWhatAllHadWhereTheOldOneCannotBeKept)
{
    constexpr gid_t foreign = 54321;
    WriteBytes("out.oxd", "old");
    if (chown("out.oxd", static_cast<uid_t>(-1), foreign) != 0)
        GTEST_SKIP() << "Only the administrator can make such a file.";
    chmod("out.oxd", 0764);
    const std::string tool = "setpriv --bounding-set=-chown --inh-caps=-chown " OXD_TOOL;
    // NOLINTNEXTLINE(cert-env33-c,concurrency-mt-unsafe): one thread, and a shell is what runs programs
    EXPECT_EQ(std::system((tool + " set sample.oxd Scan/Lines 1 -o out.oxd").c_str()), 0);
    EXPECT_EQ(ModeOf("out.oxd"), 0744);
}

TEST_F(PosixSafeWriteTest, WritesPipesAndDevicesAsTheyAre)
{
    ResultsOf("set sample.oxd Scan/Lines 1 -o out.oxd");
    ResultsOf("correct sample.oxd --group Spectroscopy --channel 0 --op mean -o corrected.oxd");
    ResultsOf("export sample.oxd --group Spectroscopy --channel 0 -o out.csv");
    ASSERT_EQ(mkfifo("pipe.csv", 0600), 0);
    std::filesystem::create_symlink("/dev/stdout", "stdout.csv");
    for (const auto& [command, file] :
         {std::pair("set sample.oxd Scan/Lines 1 -o ", "out.oxd"),
          {"correct sample.oxd --group Spectroscopy --channel 0 --op mean -o ", "corrected.oxd"},
          {"export sample.oxd --group Spectroscopy --channel 0 --no-clobber -o ", "out.csv"},
          {"make-sample --no-clobber ", "sample.oxd"}}) {
        const std::string bytes = ReadBytes(file);
        EXPECT_EQ(ResultsOf(std::string(command) + "stdout.csv"), bytes);
        EXPECT_EQ(Run(std::string(command) + "pipe.csv & cat pipe.csv > read.txt; wait $!").exitCode, 0);
        EXPECT_EQ(ReadBytes("read.txt"), bytes);
    }
    for (const std::string command : {"make-sample ", "set sample.oxd Scan/Lines 1 -o "}) {
        ResultsOf(command + "/dev/null");
        ExpectFailure(command + "/dev/stdout >&-", 5, "Bad file descriptor");
    }
    EXPECT_TRUE(std::filesystem::is_fifo("pipe.csv"));
    for (const char* const file : {"/dev/null", "pipe.csv"})
        ExpectFailure(std::string("info ") + file, 3, std::string("oxd: ") + file + ": is not a regular file\n");
    const std::string temporary = std::filesystem::temp_directory_path();
    setenv("TMPDIR", Path("missing").c_str(), 1); // NOLINT(concurrency-mt-unsafe): there is one thread
    ExpectFailure("make-sample /dev/null", 5, "oxd: /dev/null: folder for temporary files: No such file");
    setenv("TMPDIR", temporary.c_str(), 1); // NOLINT(concurrency-mt-unsafe): there is one thread
}

TEST_F(PosixSafeWriteTest, LeavesNothingWhenInterrupted)
{
    ASSERT_EQ(mkfifo("pipe", 0600), 0);
    std::filesystem::create_directory("temporary");
    for (const auto& [signal, exitCode] : {std::pair(SIGINT, 130), {SIGTERM, 143}, {SIGHUP, 129}}) {
        (void)std::signal(signal, SIG_DFL); // the tests may have been started to ignore it, as by nohup
        const pid_t tool = StartWriting("pipe", "temporary");
        kill(tool, signal);
        int status = 0;
        waitpid(tool, &status, 0);
        EXPECT_TRUE(WIFEXITED(status)) << signal;
        EXPECT_EQ(WEXITSTATUS(status), exitCode);
        EXPECT_TRUE(std::filesystem::is_empty("temporary")) << signal;
    }

    for (int i = 0; i < 10; ++i) { // wherever it is then
        const pid_t doctor = Start({"oxd", "doctor", nullptr}, "temporary");
        kill(doctor, SIGINT);
        int status = 0;
        waitpid(doctor, &status, 0);
        EXPECT_TRUE(std::filesystem::is_empty("temporary"));
        std::filesystem::remove_all("temporary");
        std::filesystem::create_directory("temporary");
    }

    // Those that the tool was started to ignore do not end it.
    const auto before = std::signal(SIGINT, SIG_IGN);
    const pid_t tool = StartWriting("pipe", "temporary");
    (void)std::signal(SIGINT, before);
    kill(tool, SIGINT);
    EXPECT_EQ(ReadBytes("pipe").size() + 2, ReadBytes("sample.oxd").size());
    int status = 0;
    waitpid(tool, &status, 0);
    EXPECT_EQ(status, 0);
}
