// Ends of the process that come from outside: Ctrl-C, a terminal that is closed, and a request to end. The process then
// leaves no temporary file, and exits with 128 and the number of the signal. Each function has one definition per
// system.
//
// On POSIX systems the handler removes the file and ends the process on the spot, both of which a handler is allowed to
// do. So a command ends at once, also while the library reads a large file or waits for the other end of a pipe. On
// Windows, nobody can remove a file that the process still has open: there the handler only takes note, and the command
// ends where it next asks.
//
// A new file takes its place in one step. From just before that step to the end of the process interruptions go
// unheeded, so that a process which was interrupted has always left the old file.
//
// There is one temporary file at a time. Only the thread that runs the command may call these functions.
#pragma once

#include <filesystem>

namespace oxd::interruption {

// Begins to heed interruptions, except for those that the process was started to ignore.
void Heed();

// Has an interruption remove this file from now on, whether it exists or not.
void Guard(const std::filesystem::path& temporary);

// Has an interruption also remove this folder, with nothing in it but that file, until it is released. Whether it
// exists does not matter. There is one at a time.
void GuardFolder(const std::filesystem::path& folder);
void ReleaseFolder();

// For a command that writes results one after the other and no file: an interruption only takes note from now on, and
// the command ends where it next calls Check, between two results. On POSIX systems, a second one ends it at once.
void Defer();

// Ends the process, or throws a Failure that does, if there was an interruption that has not ended the process.
void Check();

// The temporary file is about to take its place. The same as Check otherwise.
void Commit();

// There is no temporary file any more.
void Release();

// Removes the temporary file and its folder for a process that ends on the spot, as far as the system removes a file
// that is open. Takes no memory.
void Abandon();

} // namespace oxd::interruption
