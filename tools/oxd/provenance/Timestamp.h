// The time that a file says it was made at.
#pragma once

#include <chrono>
#include <string>

namespace oxd {

// In UTC as ISO 8601 has it, for example 2026-11-22T13:45:00Z. Where the variable SOURCE_DATE_EPOCH is set, it is the
// time, in seconds since 1970, so that the same work gives the same file; else it is the clock's. Throws a Failure if
// the variable is no time from 1970 to 9999.
std::string Timestamp();

// The same text of any second of the years 0 to 9999.
std::string Timestamp(std::chrono::sys_seconds second);

} // namespace oxd
