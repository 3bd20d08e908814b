// One item of the measurement information as a line of a header, the same in flat lists and in trees.
#pragma once

#include <string>
#include <string_view>

namespace veltaris::velflexlib::dataset {

// A plain value; neither text holds anything that a header cannot.
struct CInfoLine
{
    std::string key;
    std::string value; // empty: there is no such line
};

// The line of an item, made so that reading it gives back the same line: characters that a header cannot hold are
// changed, the name ends before its first "=", and a line that would be read as the head of a section, or that has no
// name, begins with a blank.
CInfoLine WrittenLine(std::string_view name, std::string_view value);

} // namespace veltaris::velflexlib::dataset
