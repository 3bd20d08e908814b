// Full devices and closed streams, which only a POSIX shell can set up: these cases are all that other systems skip.
#include "tool/ToolTest.h"

#include <csignal>
#include <cstdlib>
#include <filesystem>

#include <sys/resource.h>
#include <unistd.h>

using PosixStreamTest = ToolTest;

TEST_F(PosixStreamTest, NoticesThatResultsDoNotArrive)
{
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    constexpr int known = 9; // shells take one digit
    ASSERT_EQ(dup2(ends[1], known), known);
    close(ends[0]); // nobody reads what is written there
    for (const std::string question :
         {"info sample.oxd", "info --json sample.oxd", "get sample.oxd Scan/Lines", "--help", "--version"}) {
        ExpectFailure(question + " > /dev/full", 5, "oxd: standard output: No space left");
        ExpectFailure(question + " >&-", 5, "oxd: standard output: Bad file descriptor");
        EXPECT_EQ(ResultsOf(question + " >&9"), ""); // nobody is left who could miss anything
    }
    EXPECT_EQ(Run("info missing.oxd sample.oxd >&9").exitCode, 3);
    ResultsOf("set sample.oxd Scan/Lines 1 -o other.oxd");
    EXPECT_EQ(Run("diff sample.oxd other.oxd >&9").exitCode, 1);
    const std::string temporary = std::filesystem::temp_directory_path();
    setenv("TMPDIR", Path("missing").c_str(), 1); // NOLINT(concurrency-mt-unsafe): there is one thread
    EXPECT_EQ(Run("doctor >&9").exitCode, 5);
    setenv("TMPDIR", temporary.c_str(), 1); // NOLINT(concurrency-mt-unsafe): there is one thread
    close(ends[1]);
    close(known);
}

TEST_F(PosixStreamTest, NoticesAFullDisk)
{
    for (const char* const command : {"make-sample /dev/full", "set sample.oxd Scan/Lines 1 -o /dev/full"})
        ExpectFailure(command, 5, "oxd: /dev/full: No space left");
    for (const std::string link : {"full.csv", "full.raw", "full.f64", "full.png"}) {
        std::filesystem::create_symlink("/dev/full", link);
        ExpectFailure("export sample.oxd --group ForwardScan --channel 0 -o " + link, 5, "No space left");
        EXPECT_TRUE(std::filesystem::exists(link)) << link; // a device is not removed
    }
}

TEST_F(PosixStreamTest, LeavesNoPartOfAFile)
{
    WriteBytes("old.f64", "old");
    std::filesystem::create_symlink("old.f64", "link.f64");

    // The tool inherits a limit to the size of files, and that going beyond it is an error only.
    const auto before = std::signal(SIGXFSZ, SIG_IGN);
    rlimit limit{};
    getrlimit(RLIMIT_FSIZE, &limit);
    const rlimit small{10000, limit.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
    ExpectFailure("export sample.oxd --group ForwardScan --channel 0 -o out.csv", 5, "File too large");
    ExpectFailure("export sample.oxd --group ForwardScan --channel 0 -o link.f64", 5, "File too large");
    ExpectFailure("set sample.oxd Scan/Lines 1 -o old.f64", 5, "oxd: old.f64: not written whole");
    ExpectFailure("make-sample /dev/null", 5, "oxd: /dev/null: folder /"); // in which the file is made
    setrlimit(RLIMIT_FSIZE, &limit);
    (void)std::signal(SIGXFSZ, before);
    EXPECT_FALSE(std::filesystem::exists("out.csv"));
    EXPECT_EQ(ReadBytes("old.f64"), "old");
}

TEST_F(PosixStreamTest, WorksWithoutStandardStreams)
{
    EXPECT_EQ(Run("make-sample other.oxd <&- >&- 2>&-").exitCode, 0);
    EXPECT_EQ(Run("info other.oxd 2>&-").results, ResultsOf("info other.oxd"));

    // What the library logs of a file is in nobody's way then.
    WriteOxd("[DataSet]\nVersion=2\nGroupCount=many\n", {}, "odd.oxd");
    EXPECT_EQ(Run("info odd.oxd 2>&-").results, Run("info odd.oxd").results);
}

// What the browser prints is not what the command was asked for.
TEST_F(PosixStreamTest, OpensThePageInABrowserOfItsOwnOrSaysThatThereIsNone)
{
    if (!OXD_HAS_VIEWER)
        GTEST_SKIP() << "this build has no viewer";
    const std::string path = std::getenv("PATH");
    const auto browse = [&](const std::string& end) {
        WriteBytes("xdg-open", "#!/bin/sh\necho noise; echo noise >&2; echo \"$1\" >opened.txt; exit " + end + "\n");
        std::filesystem::permissions("xdg-open", std::filesystem::perms::owner_all);
        SetVariable("PATH", (Path("") + ":" + path).c_str());
    };
    browse("0");
    EXPECT_EQ(ResultsOf("view sample.oxd -o page.html"), "page.html\n");
    EXPECT_EQ(ReadBytes("opened.txt"), (std::filesystem::current_path() / "page.html").string() + "\n");
    browse("3");
    const Outcome refused =
        ExpectMessage("view sample.oxd -o page.html", 3, "page.html: is written, but the system opens no");
    EXPECT_EQ(refused.results, "page.html\n");
    EXPECT_TRUE(std::filesystem::exists("page.html"));
    SetVariable("PATH", path.c_str());
}
