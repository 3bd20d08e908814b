// A new file in the place of an old one. It is open to nobody who could not open the old one, with two exceptions that
// OpenReplacement names.
#pragma once

#include <filesystem>

namespace veltaris::velstdlib::util {

// Removes the regular file at `path`, as RemoveRegularFile does, and opens a new, empty one for writing. Anything that
// is not removed, a link or a device for example, is opened and truncated. Returns the descriptor, or -1 with `errno`
// set. Takes no memory and may be called by any thread.
//
// On POSIX systems the new file has the permission bits of the removed one, and its owner and group where the system
// allows to set them. It is created with the owner's bits alone and gets the others while it is still empty, so that it
// is never open to more users than the old one was. Where the group cannot be kept, group and others only get what
// both had. Set-user-ID and set-group-ID bits, access lists and further hard links are not carried over.
//
// Two things may open the new file to somebody who could not open the old one. A folder with a default access list
// passes it on to the new file. And where the owner cannot be kept, because the caller is not the old file's owner and
// may not change owners, the new file is the caller's, with the owner's permission bits of the old one.
//
// Opening a FIFO blocks until somebody reads from it.
int OpenReplacement(const std::filesystem::path& path);

} // namespace veltaris::velstdlib::util
