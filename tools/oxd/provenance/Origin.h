// Where a file comes from: the programs that made it, and the file that they made it from.
#pragma once

#include <string>

namespace oxd {

std::string ToolName();    // with its version, for example "oxd 0.1.0"
std::string LibraryName(); // the same of the library that the process has loaded

// Without the folders, which concern nobody who gets the file.
std::string NameWithoutFolder(const std::string& file);

} // namespace oxd
