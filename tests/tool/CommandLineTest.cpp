#include "tool/ToolTest.h"

#include <tuple>

using CommandLineTest = ToolTest;

TEST_F(CommandLineTest, AnswersQuestionsAboutItself)
{
    EXPECT_EQ(ResultsOf("--version"), "oxd " OXD_VERSION "\n");
    for (const char* const command : {"info", "make-sample", "correct", "export", "get", "set"}) {
        EXPECT_NE(ResultsOf("--help").find(command), std::string::npos);
        EXPECT_NE(ResultsOf(std::string(command) + " --help").find(std::string("oxd ") + command), std::string::npos);
    }
}

TEST_F(CommandLineTest, RefusesWhatItCannotDo)
{
    const auto empty = Create("empty.oxd");
    CreateChannel(empty, 8, 0, 3);
    Save(empty);
    std::filesystem::copy_file("sample.oxd", "sample.csv");
    WriteBytes("old.png", "old");
    std::filesystem::create_directory("folder.csv");
    const std::string bytes = ReadBytes("sample.oxd");
    const std::string scan = " --group ForwardScan --channel 0 ";
    const std::tuple<int, std::string, const char*> cases[] = {
        {2, "", "A command is required"},
        {2, "info", "FILE is required"},
        {2, "info x.oxd y.oxd", "y.oxd"},
        {2, "correct x.oxd --group G --channel 0 --op mean", "--output is required"},
        {2, "export x.oxd --group G --channel 0 --op raw -o y.csv", "raw"},
        {2, "get x.oxd", "PATH is required"},
        {2, "set x.oxd A/B -o y.oxd", "VALUE is required"},
        {2, "set x.oxd A/B 1", "--output or --in-place is required"},
        {2, "set x.oxd A/B 1 --in-place -o y.oxd", "--output excludes --in-place"},
        {2, "set x.oxd A/B 1 --in-place --no-clobber", "--no-clobber excludes --in-place"},
        {2, "export sample.oxd -o out.txt" + scan, "out.txt: its suffix"},
        {2, "export sample.oxd -o png" + scan, "png: its suffix"},
        {2, "export sample.oxd --grey -o out.csv" + scan, "--grey"},
        {2, "export sample.csv -o ./sample.csv" + scan, "./sample.csv: "},
        {2, "correct sample.oxd --op mean -o ./sample.oxd" + scan, "./sample.oxd: "},
        {2, "set sample.oxd Scan/X-Pos 0 -o ./sample.oxd", "./sample.oxd: "},
        {2, "get sample.oxd Scan/Rotation --separator ''", "--separator"},
        {2, "set sample.oxd -o out.oxd Scan/Rotation ''", "value"},
        {2, "set sample.oxd -o out.oxd Scan/Rotation '5 '", "value"},
        {2, "set sample.oxd -o out.oxd Scan/Rotation '5\n6'", "value"},
        {2, "set sample.oxd -o out.oxd Scan/Rotation 'see #!1'", "value"},
        {2, "info sample.oxd info sample.oxd", "info"},
        {2, "set sample.oxd -o out.oxd Scan//Gain 5 --create", "name"},
        {2, "set sample.oxd -o out.oxd Scan/a=b 5 --create", "name"},
        {2, "set sample.oxd -o out.oxd Gain 5 --create", "in a group"},
        {1, "set sample.oxd -o out.oxd Scan/Rotation/X 5 --create", "no group"},
        {1, "set sample.oxd -o out.oxd Instrument/Scanner 5 --create", "is a group"},
        {1, "set sample.oxd -o out.oxd Scan/X-Position 0", "no information named"},
        {1, "get sample.oxd Scan/rotation", "no information named"},
        {1, "get sample.oxd Instrument/Scanner", "\"Instrument/Scanner\" is a group"},
        {1, "correct sample.oxd --op mean -o out.oxd --group Scan --channel 0", "no group"},
        {1, "correct sample.oxd --op mean -o out.oxd --group ForwardScan --channel Height", "no channel"},
        {1, "correct sample.oxd --op mean -o out.oxd --group ForwardScan --channel 1x", "no channel"},
        {1, "export empty.oxd --group Group0 --channel 0 -o old.png", "no samples"},
        {1, "export empty.oxd --group Group0 --channel 0 -o old.png --grey", "no samples"},
        {3, "info missing.oxd", "oxd: missing.oxd: No such file"},
        {3, "info folder.csv", "oxd: folder.csv: "},
        {5, "make-sample nowhere/sample.oxd", "oxd: nowhere/sample.oxd: No such file"},
        {5, "correct sample.oxd --op mean -o ." + scan, "oxd: .: "},
        {5, "export sample.oxd -o folder.csv" + scan, "oxd: folder.csv: Is a directory\n"},
    };
    for (const auto& [exitCode, arguments, part] : cases)
        ExpectFailure(arguments, exitCode, part);
    EXPECT_EQ(ReadBytes("sample.oxd"), bytes);
    EXPECT_EQ(ReadBytes("sample.csv"), bytes);
    EXPECT_EQ(ReadBytes("old.png"), "old");
    EXPECT_FALSE(std::filesystem::exists("out.oxd"));
}

TEST_F(CommandLineTest, TellsForeignAndDamagedFilesFromItsOwn)
{
    for (const char* const content : {"", "#!/bin/sh\n", "[DataSet]\r\nVersion=2\r\n", "\xFF\xD8\xFF\xE0"}) {
        WriteBytes("foreign.oxd", content);
        ExpectFailure("info foreign.oxd", 4, "oxd: foreign.oxd: not an .oxd file");
    }
    WriteOxd("[DataSet]\nVersion=3\n", {}, "future.oxd");
    ExpectFailure("info future.oxd", 4, "unknown version");
    WriteOxd("[DataSet]\nVersion=2\nGroupCount=999999999\n", {}, "damaged.oxd");
    ExpectFailure("info damaged.oxd", 4, "to get a correct hed file. (section DataSet, key GroupCount)\n");

    WriteOxd("[DataSet]\nVersion=2\nGroupCount=1\nGr0-Count=1\nGr0-Ch0=C\n[C]\nPoints=9\nLines=1\n", "cut", "cut.oxd");
    ExpectFailure("info cut.oxd", 4, "oxd: cut.oxd: damaged, it ends before its samples do");
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
