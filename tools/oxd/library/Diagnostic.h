// Reads the texts in which the library tells why a call failed.
#pragma once

#include <string>
#include <string_view>

namespace oxd::diagnostic {

// The file could not be opened at all, as opposed to opened and found wanting.
bool IsOpenFailure(std::string_view text);

// The file ended too early, or took no more.
bool IsStreamFailure(std::string_view text);

bool IsShortBuffer(std::string_view text);

// The part that a user can act upon.
std::string Reason(std::string_view text);

} // namespace oxd::diagnostic
