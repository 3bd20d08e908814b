// What the system says of a file before it is touched.
#pragma once

#include <string>

namespace veltaris::velstdlib::util {

// Whether the file exists and nobody has the permission to write it; the owner of the system is asked like everybody. A
// link is judged by what it leads to.
bool IsWriteProtected(const std::string& path);

} // namespace veltaris::velstdlib::util
