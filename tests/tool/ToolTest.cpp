#include "tool/ToolTest.h"

#include <algorithm>

ToolTest::ToolTest() : m_outside(std::filesystem::current_path())
{
    std::filesystem::current_path(Path(""));
}

ToolTest::~ToolTest()
{
    std::filesystem::current_path(m_outside);
}

Outcome ToolTest::Run(const std::string& arguments) const
{
    const int exitCode = RunTool(arguments);
    return {exitCode, ReadBytes("results.txt"), ReadBytes("diagnostics.txt")};
}

std::string ToolTest::ResultsOf(const std::string& arguments) const
{
    const Outcome outcome = Run(arguments);
    EXPECT_EQ(outcome.exitCode, 0) << arguments;
    EXPECT_EQ(outcome.diagnostics, "") << arguments;
    return outcome.results;
}

void ToolTest::ExpectFailure(const std::string& arguments, int exitCode, const std::string& part) const
{
    const Outcome outcome = Run(arguments);
    EXPECT_EQ(outcome.exitCode, exitCode) << arguments;
    EXPECT_EQ(outcome.results, "") << arguments;
    EXPECT_TRUE(outcome.diagnostics.starts_with("oxd: ")) << outcome.diagnostics;
    EXPECT_EQ(std::count(outcome.diagnostics.begin(), outcome.diagnostics.end(), '\n'), 1) << outcome.diagnostics;
    EXPECT_NE(outcome.diagnostics.find(part), std::string::npos) << outcome.diagnostics;
}
