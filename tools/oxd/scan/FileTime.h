// When a file was changed, to the nanosecond, and points in time on the command line.
#pragma once

#include <chrono>
#include <filesystem>
#include <string>

namespace oxd {

using FileTime = std::chrono::sys_time<std::chrono::nanoseconds>;

FileTime ToFileTime(std::filesystem::file_time_type time);

// In UTC as ISO 8601 has it, with nine digits behind the point: 2026-11-22T13:45:00.000000000Z.
std::string ToText(FileTime time);

// Of a day, 2026-11-22, which is its beginning, or a second, 2026-11-22T13:45:00 with or without a Z; in UTC. Throws a
// Failure for any other text, and for a day that no calendar has.
FileTime ParseTime(const std::string& text);

} // namespace oxd
