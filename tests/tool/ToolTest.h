// Runs the tool as its users do: as a process of its own, in a folder that goes with the test.
#pragma once

#include "support/OxdTest.h"

#include <algorithm>
#include <filesystem>
#include <string>

// Starts the tool with what a user types behind its name: the exit code, -1 if it came to no regular end. Its streams
// go to results.txt and diagnostics.txt, here. Only a POSIX shell understands more in `arguments` than words and single
// quotes.
int RunTool(const std::string& arguments, const char* tool = OXD_TOOL);

// Sets a variable of the environment in which the tool is started.
void SetVariable(const char* name, const char* value);

struct Outcome
{
    int exitCode;
    std::string results;     // standard output
    std::string diagnostics; // standard error
};

// The folder has a sample file. What the tool notes down of the time is 2020-01-02T03:04:05Z.
class ToolTest : public OxdTest
{
protected:
    ToolTest() : m_outside(std::filesystem::current_path())
    {
        std::filesystem::current_path(Path(""));
        SetVariable("SOURCE_DATE_EPOCH", "1577934245");
        ResultsOf("make-sample sample.oxd");
    }
    ~ToolTest() override { std::filesystem::current_path(m_outside); }

    // Takes away the views and processors of the sample, which validation has notes on.
    static void DropSettings()
    {
        std::string bytes = ReadBytes("sample.oxd");
        const auto begin = bytes.find("[SetView]");
        WriteBytes("sample.oxd", bytes.erase(begin, bytes.find("\r\n#!") - begin));
    }

    // `arguments` as typed in a shell; they may redirect the standard output elsewhere.
    static Outcome Run(const std::string& arguments)
    {
        const int exitCode = RunTool(arguments);
        return {exitCode, ReadBytes("results.txt"), ReadBytes("diagnostics.txt")};
    }

    // Runs the tool, which must be content.
    static std::string ResultsOf(const std::string& arguments)
    {
        const Outcome outcome = Run(arguments);
        EXPECT_EQ(outcome.exitCode, 0) << arguments;
        EXPECT_EQ(outcome.diagnostics, "") << arguments;
        return outcome.results;
    }

    // Runs the tool, which must end with `exitCode`, and with a message that holds `part`.
    static Outcome ExpectMessage(const std::string& arguments, int exitCode, const std::string& part)
    {
        Outcome outcome = Run(arguments);
        EXPECT_EQ(outcome.exitCode, exitCode) << arguments;
        EXPECT_NE(outcome.diagnostics.find(part), std::string::npos) << outcome.diagnostics;
        return outcome;
    }

    // The same, with no results and no other message.
    static void ExpectFailure(const std::string& arguments, int exitCode, const std::string& part)
    {
        const Outcome outcome = ExpectMessage(arguments, exitCode, part);
        EXPECT_EQ(outcome.results, "") << arguments;
        EXPECT_TRUE(outcome.diagnostics.starts_with("oxd: ")) << outcome.diagnostics;
        EXPECT_EQ(std::ranges::count(outcome.diagnostics, '\n'), 1) << outcome.diagnostics;
    }

private:
    std::filesystem::path m_outside;
};
