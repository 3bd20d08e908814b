// What differs between operating systems where one file takes the place of another, with one definition per system.
// Functions that give a descriptor or a success leave the reason of a failure in errno.
#pragma once

#include <filesystem>

namespace oxd::platform {

// The file that `path` leads to once its symbolic links are followed, whether it exists or not. Throws
// std::filesystem::filesystem_error where they lead in circles.
std::filesystem::path FollowLinks(const std::filesystem::path& path);

// Whether the user is allowed to write to a file that exists. One that nobody has the permission to write is kept from
// the administrator, too.
bool IsWritable(const std::filesystem::path& file);

// Creates a file that must not exist, to take the place of `replaced`, and opens it for writing, or gives -1. At no
// time is it open to more users than that was: it has its permission bits, and its owner and group where the system
// allows. Where nothing has that name, the file has the rights of any new one, and without a name only this user may
// use it. Until FinishRights, its owner may read and write it in any case, so that it can be filled by its name.
int CreateReplacement(const std::filesystem::path& file, const std::filesystem::path& replaced);

// Gives the owner of such a file the rights that are meant to last, as far as the system allows.
void FinishRights(int descriptor, const std::filesystem::path& replaced);

// Opens a file that exists for writing, and leaves its content as it is; or gives -1.
int OpenExisting(const std::filesystem::path& file);

// Forces what was written to the disk.
bool Flush(int descriptor);

// Forces the names of the files in a folder to the disk. True where the system has no means to do that.
bool FlushFolder(const std::filesystem::path& folder);

// Gives a file another name, in one step. With `mayReplace`, it takes the place of what had that name; else, nothing
// must have it (EEXIST).
bool Move(const std::filesystem::path& from, const std::filesystem::path& to, bool mayReplace);

} // namespace oxd::platform
