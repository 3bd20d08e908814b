// Whatever a command writes takes the place of the old file whole, or not at all.
#include "tool/ToolTest.h"

#include <sstream>

namespace {

const std::vector<std::string> writing{"set sample.oxd Scan/Lines 1 -o ",
                                       "correct sample.oxd --group ForwardScan --channel 0 --op mean -o ",
                                       "export sample.oxd --group ForwardScan --channel 0 -o ",
                                       "export sample.oxd --group ForwardScan --channel 0 --grey -o ", "make-sample "};

} // namespace

class SafeWriteTest : public ToolTest
{
protected:
    // No test may leave a temporary file.
    ~SafeWriteTest() override
    {
        for (const auto& entry : std::filesystem::directory_iterator("."))
            EXPECT_FALSE(entry.path().string().find(".oxd-") != std::string::npos) << entry.path();
    }
};

TEST_F(SafeWriteTest, ReplacesAFileUnlessItIsNotToBe)
{
    for (const std::string& command : writing) {
        WriteBytes("out.png", "old");
        ExpectFailure(command + "out.png --no-clobber", 5, "oxd: out.png: File exists\n");
        EXPECT_EQ(ReadBytes("out.png"), "old") << command;
        ResultsOf(command + "out.png");
        const std::string replaced = ReadBytes("out.png");
        std::filesystem::remove("out.png");
        ResultsOf(command + "out.png --no-clobber");
        EXPECT_EQ(ReadBytes("out.png"), replaced) << command;
        EXPECT_NE(replaced, "old") << command;
    }
}

TEST_F(SafeWriteTest, ChangesAFileInPlace)
{
    std::string expected = ReadBytes("sample.oxd");
    expected.replace(expected.find("X-Pos=12.4 \xC2\xB5m"), 14, "X-Pos=-5e-6");
    EXPECT_EQ(ResultsOf("set sample.oxd Scan/X-Pos -5e-6 --in-place"), "");
    EXPECT_EQ(ReadBytes("sample.oxd"), expected);
}

TEST_F(SafeWriteTest, LeavesTheOldFileWhenTheNewOneIsWrong)
{
    const std::string bytes = ReadBytes("sample.oxd");
    const std::string clash = "set sample.oxd Scan/rotation 5 --create ";
    WriteBytes("old.oxd", "old");
    for (const std::string option : {"-o old.oxd", "-o new.oxd", "--in-place"})
        ExpectMessage(clash + option, 2, "another name or value");
    EXPECT_EQ(ReadBytes("old.oxd"), "old");
    EXPECT_FALSE(std::filesystem::exists("new.oxd"));
    EXPECT_EQ(ReadBytes("sample.oxd"), bytes);
}

TEST_F(SafeWriteTest, HelpAndDocumentGiveTheSameExitCodes)
{
    const std::string document = ReadBytes(OXD_MANUAL);
    const std::string help = ResultsOf("--help");
    std::istringstream lines(help.substr(help.find("Exit codes:\n") + 12));
    int rows = 0;
    for (std::string line; std::getline(lines, line) && line.starts_with("  "); ++rows) {
        const std::string row = "| " + std::to_string(std::stoi(line)) + " | " + line.substr(6) + " |";
        EXPECT_NE(document.find(row), std::string::npos) << row;
    }
    EXPECT_EQ(rows, 8);
}
