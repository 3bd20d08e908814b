// Runs a command for each of several files.
#pragma once

#include "oxd/system/Failure.h"

#include <functional>
#include <string>
#include <vector>

namespace oxd {

class Results;

// What a command has to say of one file.
struct FileAnswer
{
    std::string text;                       // for the standard output
    std::vector<std::string> messages = {}; // a sentence each, without the name of the file
    ExitCode code = ExitCode::Done;
};

struct FileList
{
    std::vector<std::string> names;
    bool json = false;      // one document
    bool jsonLines = false; // a file that fails gives a line of JSON, too
};

// Writes the answers in the order of the files. A file that fails is a message, and the next one is asked. `outcome`
// becomes the worst code so far, which is the one with the largest number, before an answer is written. Throws what
// Results::Write throws.
void AnswerForEach(const FileList& files, const std::function<FileAnswer(const std::string& file)>& answer,
                   Results& results, ExitCode& outcome);

} // namespace oxd
