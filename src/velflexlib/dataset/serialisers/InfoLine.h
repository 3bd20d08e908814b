// One item of the measurement information as a line of a header.
#pragma once

#include <string>
#include <string_view>

namespace veltaris::velflexlib::dataset {

struct CInfoLine
{
    std::string key;
    std::string value; // empty: there is no such line
};

// The line that reading gives back as it was written: what a header cannot hold is changed, the name ends before its
// first "=", and a line that would read as the head of a section, or has no name, begins with a blank.
CInfoLine WrittenLine(std::string_view name, std::string_view value);

} // namespace veltaris::velflexlib::dataset
