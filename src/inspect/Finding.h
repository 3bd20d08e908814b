// What an inspection finds in a file.
#pragma once

#include "inspect/Rules.h"

#include <cstdint>
#include <string>

namespace veltaris::inspect {

// A plain value. Texts are UTF-8; `rule` is never null.
struct Finding
{
    const Rule* rule = nullptr;
    std::uint64_t offset = 0; // of the byte in the file where it begins
    std::uint64_t line = 0;   // of the header, from 1; 0 where it concerns no line
    std::string section, key; // empty where there is none
    std::string found;        // the text as it stands in the file, at most 200 characters
    std::string taken;        // what was made of it
    std::string sentence;     // for a person
};

} // namespace veltaris::inspect
