// What must hold of a file name before the file is opened: the cases in which opening would succeed, wait or fail
// without a reason, although the library cannot use what the name leads to.
#pragma once

#include <boost/assert/source_location.hpp>

#include <string>

namespace veltaris::velstdlib::util {

// Both throw CVELFileOpenException, raised at `where`, with the error number that a failed open would have set. They
// ask the system only, and may be called from any thread.

// Refuses a folder, and a device or pipe. A name that leads to nothing passes: opening it fails with the true reason.
void CheckReadable(const std::string& path, const boost::source_location& where);

// Refuses a folder, and a file that nobody has the permission to write. A name that leads to nothing passes.
void CheckWritable(const std::string& path, const boost::source_location& where);

} // namespace veltaris::velstdlib::util
