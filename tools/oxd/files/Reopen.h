// Reading a file again that the command has read before.
#pragma once

#include <fstream>
#include <string>

namespace oxd {

// Throws a Failure if the file cannot be opened any more, and std::bad_alloc.
std::ifstream Reopen(const std::string& file);

} // namespace oxd
