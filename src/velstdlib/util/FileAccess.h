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

} // namespace veltaris::velstdlib::util
