// Questions to the system about a file, and its removal to make way for a new one. These functions keep no state and
// may be called by any thread.
#pragma once

#include <filesystem>
#include <string>

namespace veltaris::velstdlib::util {

// A file name as callers give it: in the system's code page on Windows, bytes of no particular meaning elsewhere.
std::filesystem::path ToPath(const std::string& fileName);

// Whether the file exists and has no write permission at all, neither for its owner nor for its group nor for others.
// The administrator, whom the system would let write it, is held to this as well. A link is judged by its target.
bool IsWriteProtected(const std::string& fileName);

// Whether the name leads to something that is neither a file nor a folder, for example a pipe or a console.
bool IsDevice(const std::string& fileName);

// Makes way for a new file: removes a regular file and says whether it did. Anything else stays, to be opened and
// truncated; so does a file that other programs have open on Windows, where it would only disappear when they close it,
// and take what replaces it along. Takes no memory.
bool RemoveRegularFile(const std::filesystem::path& path);

} // namespace veltaris::velstdlib::util
