// What `oxd doctor` tells of an installation: plain data, which one function makes and others turn into text.
#pragma once

#include "oxd/system/Failure.h"

#include <string>
#include <vector>

namespace oxd {

struct Check
{
    std::string name;
    std::string found;
    std::string remedy = {}; // a sentence; empty if nothing is wrong

    bool IsOk() const { return remedy.empty(); }
};

using Checks = std::vector<Check>;

struct Diagnosis
{
    Checks checks = {};
    ExitCode outcome = ExitCode::Done; // not that, only if files cannot be written or read
};

// Examines this process and the system that it runs on, and writes and reads files in the temporary folder, which are
// gone afterwards. Throws nothing for what it finds. `outputIsTerminal` is about the standard output.
Diagnosis Examine(const std::string& toolVersion, bool outputIsTerminal);

// For people, a line for each check and another one for each remedy, in which control characters are replaced.
std::string ToText(const Diagnosis& diagnosis);

// A JSON document whose shape docs/oxd.md describes.
std::string ToJson(const Diagnosis& diagnosis);

} // namespace oxd
