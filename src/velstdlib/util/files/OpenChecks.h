// Checks on a path before it is opened: cases in which opening would succeed although it should not, or would fail
// without a useful reason. CheckReadable also refuses what would block.
#pragma once

#include <boost/assert/source_location.hpp>

#include <string>

namespace veltaris::velstdlib::util {

// Both throw CVELFileOpenException, raised at `where`, with the error number that a failed open would have set. They
// ask the system only, and may be called from any thread.

// Refuses a folder, and a device or pipe. A name that leads to nothing passes: opening it fails with the true reason.
void CheckReadable(const std::string& path, const boost::source_location& where);

// Refuses a folder, and a file that nobody has the permission to write. A name that leads to nothing passes, and so
// does a device or a FIFO, which may be written to. Opening a FIFO then blocks until somebody reads from it.
void CheckWritable(const std::string& path, const boost::source_location& where);

} // namespace veltaris::velstdlib::util
