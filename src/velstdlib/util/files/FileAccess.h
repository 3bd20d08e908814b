// What the system says of a file before it is touched.
#pragma once

#include <filesystem>
#include <string>

namespace veltaris::velstdlib::util {

// A file name as callers give it: in the system's code page on Windows, bytes of no particular meaning elsewhere.
std::filesystem::path ToPath(const std::string& fileName);

// Whether the file exists and nobody has the permission to write it; the owner of the system is asked like everybody. A
// link is judged by what it leads to.
bool IsWriteProtected(const std::string& fileName);

// Whether the name leads to something other than what a disk holds: a pipe, a console.
bool IsDevice(const std::string& fileName);

// Makes way for a new file: removes a regular file. Anything else stays, to be opened and truncated; so does a file
// that other programs have open, where it would only go when they close it, and take what replaces it along. Takes no
// memory.
void RemoveRegularFile(const std::filesystem::path& path);

} // namespace veltaris::velstdlib::util
