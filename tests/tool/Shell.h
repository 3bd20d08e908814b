// Starts the tool with what a user types behind its name.
#pragma once

#include <string>

// The exit code of the tool, -1 if it came to no regular end. Its streams go to results.txt and diagnostics.txt, here.
// Only a POSIX shell understands more in `arguments` than words and single quotes.
int RunTool(const std::string& arguments, const char* tool = OXD_TOOL);
