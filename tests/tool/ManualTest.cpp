// The manual's commands do what it says, and it describes every command.
#include "tool/ToolTest.h"

#include <sstream>

using ManualTest = ToolTest;

namespace {

// What follows "oxd " in the lines of blocks marked sh, in order.
std::vector<std::string> CommandsIn(const std::string& document)
{
    std::vector<std::string> commands;
    std::istringstream lines(document);
    bool isShell = false;
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("```"))
            isShell = line == "```sh";
        else if (isShell)
            commands.push_back(line.substr(line.starts_with("oxd ") ? 4 : 0));
    }
    return commands;
}

} // namespace

TEST_F(ManualTest, ShowsCommandsThatWorkInItsOrder)
{
    std::filesystem::remove("sample.oxd");
    const auto commands = CommandsIn(ReadBytes(OXD_MANUAL));
    EXPECT_GT(commands.size(), 10);
    for (const std::string& command : commands)
        EXPECT_EQ(Run(command).exitCode, 0) << command;
    EXPECT_EQ(ResultsOf("get noted.oxd Scan/Comment"), "second cleavage\n");
}

TEST_F(ManualTest, DescribesEveryCommand)
{
    const std::string manual = ReadBytes(OXD_MANUAL);
    std::istringstream help(ResultsOf("help"));
    std::string line;
    while (std::getline(help, line) && line != "Commands:") {
    }
    std::size_t described = 0;
    while (std::getline(help, line) && line.starts_with("  ")) {
        const std::string command = line.substr(2, line.find(' ', 2) - 2);
        EXPECT_NE(manual.find("| `oxd " + command), std::string::npos) << command;
        ++described;
    }
    EXPECT_GE(described, 7);
}
