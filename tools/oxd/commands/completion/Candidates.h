// What may stand at the end of a command line that is being typed.
#pragma once

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

namespace oxd {

// A plain value.
struct Candidate
{
    std::string word;
    std::string description; // may be empty
};

// `words` are those behind the tool's name, up to the one that is being typed, which may be empty. The candidates begin
// with it: commands, options, the words that an option takes, and the names of groups and channels of the file that
// stands among the words. None where any file may stand, and none if that file cannot be read.
std::vector<Candidate> Candidates(const CLI::App& app, const std::vector<std::string>& words);

} // namespace oxd
