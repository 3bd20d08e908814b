// Bytes of unknown encoding into the UTF-8 that everything inside the library and its interface is in.
#pragma once

#include <string>
#include <string_view>

namespace veltaris::velstdlib::string {

bool IsValidUtf8(std::string_view bytes);

// Appends `bytes` as UTF-8: as they are, less a byte-order mark, when they are valid UTF-8; else decoded from the
// system's ANSI code page. UTF-16 and UTF-32 byte-order marks throw std::runtime_error "Not yet handled".
void AppendAnalyzed(std::string& text, std::string bytes);

// Code page 1252 as UTF-8. Its five unassigned bytes become the control characters of the same numbers.
std::string Cp1252ToUtf8(std::string_view bytes);

// The system's ANSI code page as UTF-8: code page 1252 on systems that have no such thing, and where it is UTF-8
// itself, since only what is no UTF-8 is asked about.
std::string AnsiToUtf8(std::string_view bytes);

} // namespace veltaris::velstdlib::string
