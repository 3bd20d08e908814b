#include "tool/ToolTest.h"

using CommandLineTest = ToolTest;

TEST_F(CommandLineTest, AnswersQuestionsAboutItself)
{
    EXPECT_EQ(ResultsOf("--version"), "oxd " OXD_VERSION "\n");
    for (const char* const command : {"info", "make-sample", "correct", "export", "get", "set"}) {
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
        {"export x.oxd --group G --channel 0", "--output is required"},
        {"export x.oxd --group G --channel 0 --op raw -o y.csv", "raw"},
        {"get x.oxd", "PATH is required"},
        {"set x.oxd A/B -o y.oxd", "VALUE is required"},
        {"set x.oxd A/B 1", "--output is required"},
    };
    for (const auto& [arguments, part] : cases)
        ExpectFailure(arguments, 2, part);
}

TEST_F(CommandLineTest, TellsWhyAFileCannotBeOpened)
{
    std::filesystem::create_directory("folder.oxd");
    const std::pair<std::string, std::string> commands[] = {
        {"info ", ""},
        {"correct ", " --group G --channel 0 --op mean -o out.oxd"},
        {"export ", " --group G --channel 0 -o out.csv"},
        {"get ", " A/B"},
        {"set ", " A/B 1 -o out.oxd"},
    };
    for (const auto& [command, rest] : commands) {
        ExpectFailure(command + "missing.oxd" + rest, 3, "oxd: missing.oxd: No such file");
        ExpectFailure(command + "folder.oxd" + rest, 3, "oxd: folder.oxd: ");
    }
}

TEST_F(CommandLineTest, TellsForeignFilesFromItsOwn)
{
    for (const char* const content : {"", "#!/bin/sh\n", "[DataSet]\r\nVersion=2\r\n", "\xFF\xD8\xFF\xE0"}) {
        WriteBytes("foreign.oxd", content);
        for (const char* const command : {"info foreign.oxd", "get foreign.oxd A/B", "set foreign.oxd A/B 1 -o out.oxd",
                                          "export foreign.oxd --group G --channel 0 -o out.csv"})
            ExpectFailure(command, 4, "oxd: foreign.oxd: not an .oxd file");
    }
    WriteOxd("[DataSet]\nVersion=3\n", {}, "future.oxd");
    ExpectFailure("info future.oxd", 4, "unknown version");
}

TEST_F(CommandLineTest, NamesADamagedFileOnce)
{
    WriteOxd("[DataSet]\nVersion=2\nGroupCount=999999999\n", {}, "damaged.oxd");
    ExpectFailure("info damaged.oxd", 4, "to get a correct hed file.\n");
}

TEST_F(CommandLineTest, NoticesWhereverASampleIsCutOff)
{
    ResultsOf("make-sample whole.oxd");
    const std::string whole = ReadBytes("whole.oxd");
    constexpr std::size_t cuts = 24;
    for (std::size_t cut = 0; cut < cuts; ++cut) {
        WriteBytes("cut.oxd", whole.substr(0, whole.size() * cut / cuts));
        ExpectFailure("info cut.oxd", 4, "oxd: cut.oxd: ");
        ExpectFailure("export cut.oxd --group ForwardScan --channel 0 -o out.csv", 4, "oxd: cut.oxd: ");
    }
    WriteBytes("cut.oxd", whole.substr(0, whole.size() - 1));
    ExpectFailure("info cut.oxd", 4, "ends before its samples do");
}

TEST_F(CommandLineTest, TellsWhyAFileCannotBeWritten)
{
    ExpectFailure("make-sample nowhere/sample.oxd", 5, "oxd: nowhere/sample.oxd: No such file");
    ResultsOf("make-sample sample.oxd");
    ExpectFailure("correct sample.oxd --group ForwardScan --channel 0 --op mean -o .", 5, "oxd: .: ");
    std::filesystem::create_directory("folder.csv");
    ExpectFailure("export sample.oxd --group ForwardScan --channel 0 -o folder.csv", 5,
                  "oxd: folder.csv: Is a directory\n");
}

TEST_F(CommandLineTest, TakesNamesInEveryScript)
{
    const std::string german = "gr\xC3\xB6\xC3\x9F"
                               "e.oxd";
    const std::string chinese = "\xE6\xB8\xAC.oxd";
    ResultsOf("make-sample " + german);
    EXPECT_TRUE(std::filesystem::exists(std::u8string(german.begin(), german.end())));
    EXPECT_NE(ResultsOf("info " + german).find("Topography"), std::string::npos);
    ResultsOf("export " + german + " --group ForwardScan --channel 0 -o " + chinese + ".csv");
    ResultsOf("make-sample " + chinese);
    EXPECT_NE(ResultsOf("info " + chinese).find("Topography"), std::string::npos);
}

TEST_F(CommandLineTest, ReadsHeadersOfEarlierProgramsWhateverTheCodePage)
{
    WriteOxd("[DataSet]\nVersion=2\nGroupCount=1\nGr0-Name=\xB5m\n", {}, "old.oxd");
    EXPECT_NE(ResultsOf("info old.oxd").find("\xC2\xB5m"), std::string::npos);
}
