// The texts of failures that concern a file, and of the warning that a text had to be changed for one. They are in one
// table and are looked up by number, so that they can be reworded or translated in one place.
//
// Other texts are not in it. Those for programmers are worded where the mistake is detected, and the log's other
// warnings where they are written.
#pragma once

#include <boost/exception/exception.hpp>

#include <cstdint>
#include <initializer_list>
#include <stdexcept>
#include <string>
#include <string_view>

namespace veltaris::velstdlib::string {

// The numbers of the texts. Behind each stands what FormatText puts into it.
enum class TextId : std::uint32_t
{
    FileNotFound = 1,      // the file's name
    FileCannotBeOpened,    // the file's name
    FileWriteProtected,    // the file's name
    FileVersionUnknown,    // the version
    FileCorrupted,         // the file's name
    FileCannotBeSaved,     // one of the three reasons that follow, and the file's name
    TooMuchTextForFile,    // nothing
    TooManySlotsForFile,   // nothing; channel slots of all groups together are meant
    TooManyPointlessLines, // nothing; lines without samples of all channels together are meant
    TextChangedForHeader,  // the text as it was written
};

// Thrown where a text is asked for by a number that no text has.
class CGetTextIdUndefinedException : public boost::exception, public std::out_of_range
{
    using std::out_of_range::out_of_range;
};

// The text with this number, with "%s" wherever an argument belongs. Throws CGetTextIdUndefinedException.
std::string_view GetText(TextId id);

// The same with the arguments in these places, from the first to the last: there must be as many of them. Throws
// CGetTextIdUndefinedException, and std::bad_alloc. No locale takes part, and this and GetText may be called by several
// threads at once.
std::string FormatText(TextId id, std::initializer_list<std::string_view> arguments);

} // namespace veltaris::velstdlib::string
