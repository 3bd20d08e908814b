// Runs the tool as its users do: as a process of its own, in a folder that goes with the test.
#pragma once

#include "support/OxdTest.h"

#include <filesystem>
#include <string>

struct Outcome
{
    int exitCode;
    std::string results;     // standard output
    std::string diagnostics; // standard error
};

// Starts the tool with what a user types behind its name: the exit code, -1 if it came to no regular end. Its streams
// go to results.txt and diagnostics.txt, here. Only a POSIX shell understands more in `arguments` than words and single
// quotes.
int RunTool(const std::string& arguments, const char* tool = OXD_TOOL);

class ToolTest : public OxdTest
{
public:
    ToolTest();
    ~ToolTest() override;

protected:
    // `arguments` as typed in a shell; they may redirect the standard output elsewhere.
    Outcome Run(const std::string& arguments) const;

    // Runs the tool, which must be content.
    std::string ResultsOf(const std::string& arguments) const;

    // Runs the tool, which must end with `exitCode`, give no results and one message, that holding `part`.
    void ExpectFailure(const std::string& arguments, int exitCode, const std::string& part) const;

private:
    std::filesystem::path m_outside;
};
