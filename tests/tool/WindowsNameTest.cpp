// A Windows that is older than the tool's manifest, or heeds none, has a code page that lacks most characters.
#include "tool/ToolTest.h"

#include <iterator>

using WindowsNameTest = ToolTest;

TEST_F(WindowsNameTest, NoOtherFileIsTakenForOneThatCannotBeNamed)
{
    const std::string chinese = "\xE6\xB8\xAC.oxd";
    std::filesystem::copy("sample.oxd", L"\u6E2C.oxd");
    for (const auto& [command, exitCode] : {std::pair("make-sample ", 5), std::pair("info ", 3)}) {
        EXPECT_EQ(RunTool(command + chinese, OXD_TOOL_WITHOUT_MANIFEST), exitCode);
        EXPECT_NE(ReadBytes("diagnostics.txt").find(chinese + ": the system's code page lacks"), std::string::npos);
    }
    EXPECT_EQ(RunTool("make-sample gr\xC3\xB6\xC3\x9F"
                      "e.oxd",
                      OXD_TOOL_WITHOUT_MANIFEST),
              0);
    EXPECT_TRUE(std::filesystem::exists(L"gr\u00F6\u00DFe.oxd"));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator("."), {}), 5); // with two samples and two streams
}
