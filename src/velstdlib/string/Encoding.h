// Turns bytes of unknown encoding into UTF-8, in which all texts inside the library and of its interface are, except
// file names. The functions may be called by several threads at once.
#pragma once

#include <string>
#include <string_view>

namespace veltaris::velstdlib::string {

// Whether the bytes are UTF-8 from end to end, as an empty text is.
bool IsValidUtf8(std::string_view bytes);

// Appends `bytes` as UTF-8. When they are valid UTF-8, they are appended as they are, without a byte-order mark;
// otherwise they are decoded from the system's ANSI code page. UTF-16 and UTF-32 byte-order marks throw
// std::runtime_error "Not yet handled".
void AppendAnalyzed(std::string& text, std::string bytes);

// Code page 1252 as UTF-8. Its five unassigned bytes become the control characters of the same numbers.
std::string Cp1252ToUtf8(std::string_view bytes);

// Bytes in the system's ANSI code page as UTF-8. Code page 1252 stands in for it on systems that have no such thing,
// and where it is UTF-8 itself: only bytes that are no UTF-8 come here.
std::string AnsiToUtf8(std::string_view bytes);

} // namespace veltaris::velstdlib::string
