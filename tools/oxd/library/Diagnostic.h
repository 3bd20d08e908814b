// Reads the texts in which the library tells why a call failed. They are made for developers: several lines, of which a
// user needs one. This is the only place that knows how they look.
#pragma once

#include <string>
#include <string_view>

namespace oxd::diagnostic {

// The file could not be opened at all, as opposed to opened and found wanting.
bool IsOpenFailure(std::string_view text);

// A file that is read ended too early, or one that is written took no more.
bool IsStreamFailure(std::string_view text);

// The buffer that the caller provided was too small for the text to be returned.
bool IsShortBuffer(std::string_view text);

// There was not enough memory, whatever the call was about.
bool IsOutOfMemory(std::string_view text);

// The part that a user can act upon, in one sentence: the system's own message if there is one, else the library's,
// with the place in the header that it is about.
std::string Reason(std::string_view text);

} // namespace oxd::diagnostic
