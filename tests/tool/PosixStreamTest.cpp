// Full devices and closed streams, which only a POSIX shell can set up: these cases are all that other systems skip.
#include "tool/ToolTest.h"

#include <unistd.h>

using PosixStreamTest = ToolTest;

TEST_F(PosixStreamTest, NoticesThatResultsDoNotArrive)
{
    ResultsOf("make-sample sample.oxd");
    for (const std::string question : {"info sample.oxd", "info --json sample.oxd", "--help", "--version"}) {
        ExpectFailure(question + " > /dev/full", 5, "oxd: standard output: No space left");
        ExpectFailure(question + " >&-", 5, "oxd: standard output: Bad file descriptor");
    }
}

TEST_F(PosixStreamTest, SurvivesAPipeThatNobodyReads)
{
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    constexpr int known = 9; // shells take one digit
    ASSERT_EQ(dup2(ends[1], known), known);
    close(ends[0]);
    ExpectFailure("--help >&9", 5, "oxd: standard output: Broken pipe");
    close(ends[1]);
    close(known);
}

TEST_F(PosixStreamTest, NoticesAFullDisk)
{
    ExpectFailure("make-sample /dev/full", 5, "oxd: /dev/full: not written whole");
}

TEST_F(PosixStreamTest, WorksWithoutStandardStreams)
{
    EXPECT_EQ(Run("make-sample sample.oxd <&- >&- 2>&-").exitCode, 0);
    EXPECT_EQ(Run("info sample.oxd 2>&-").results, ResultsOf("info sample.oxd"));

    // What the library logs of a file is in nobody's way then.
    WriteOxd("[DataSet]\nVersion=2\nGroupCount=many\n", {}, "odd.oxd");
    EXPECT_EQ(Run("info odd.oxd 2>&-").results, Run("info odd.oxd").results);
}
