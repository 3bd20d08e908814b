#include "tool/ToolTest.h"

using CommandLineTest = ToolTest;

TEST_F(CommandLineTest, AnswersQuestionsAboutItself)
{
    EXPECT_EQ(ResultsOf("--version"), "oxd " OXD_VERSION "\n");
    for (const char* const command : {"info", "make-sample", "correct"}) {
        EXPECT_NE(ResultsOf("--help").find(command), std::string::npos);
        EXPECT_NE(ResultsOf(std::string(command) + " --help").find(std::string("oxd ") + command), std::string::npos);
    }
}

TEST_F(CommandLineTest, RefusesWrongUsage)
{
    const struct
    {
        const char* arguments;
        const char* part;
    } cases[] = {
        {"", "A command is required"},
        {"inform x.oxd", "inform"},
        {"info", "FILE is required"},
        {"info x.oxd y.oxd", "y.oxd"},
        {"info --xml x.oxd", "--xml"},
        {"make-sample", "FILE is required"},
        {"correct x.oxd --group G --channel 0 --op mean", "--output is required"},
        {"correct x.oxd --group G --channel 0 --op cubic -o y.oxd", "cubic"},
    };
    for (const auto& [arguments, part] : cases)
        ExpectFailure(arguments, 2, part);
}

TEST_F(CommandLineTest, TellsWhyAFileCannotBeOpened)
{
    std::filesystem::create_directory("folder.oxd");
    for (const std::string command : {"info ", "correct --group G --channel 0 --op mean -o out.oxd "}) {
        ExpectFailure(command + "missing.oxd", 3, "oxd: missing.oxd: No such file");
        ExpectFailure(command + "folder.oxd", 3, "oxd: folder.oxd: ");
    }
}

TEST_F(CommandLineTest, TellsForeignFilesFromItsOwn)
{
    for (const char* const content : {"", "#!/bin/sh\n", "[DataSet]\r\nVersion=2\r\n", "\xFF\xD8\xFF\xE0"}) {
        WriteBytes("foreign.oxd", content);
        ExpectFailure("info foreign.oxd", 4, "oxd: foreign.oxd: not an .oxd file");
    }
}

TEST_F(CommandLineTest, TellsThatAFileIsOfAFutureVersion)
{
    WriteOxd("[DataSet]\nVersion=3\n", {}, "future.oxd");
    ExpectFailure("info future.oxd", 4, "unknown version");
}

TEST_F(CommandLineTest, NoticesWhereverASampleIsCutOff)
{
    ResultsOf("make-sample whole.oxd");
    const std::string whole = ReadBytes("whole.oxd");
    constexpr std::size_t cuts = 24;
    for (std::size_t cut = 0; cut < cuts; ++cut) {
        WriteBytes("cut.oxd", whole.substr(0, whole.size() * cut / cuts));
        ExpectFailure("info cut.oxd", 4, "oxd: cut.oxd: ");
    }
    WriteBytes("cut.oxd", whole.substr(0, whole.size() - 1));
    ExpectFailure("info cut.oxd", 4, "ends before its samples do");
}

TEST_F(CommandLineTest, TellsWhyAFileCannotBeWritten)
{
    ExpectFailure("make-sample nowhere/sample.oxd", 5, "oxd: nowhere/sample.oxd: No such file");
    ResultsOf("make-sample sample.oxd");
    ExpectFailure("correct sample.oxd --group ForwardScan --channel 0 --op mean -o .", 5, "oxd: .: ");
}
