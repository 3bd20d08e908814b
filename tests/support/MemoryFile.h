// Files that exist only in memory, for checks that open and save very often.
#pragma once

#include <sys/mman.h>

#include <cerrno>
#include <string>
#include <system_error>

// Creates such a file, which lasts until the program ends. Returns a path by which it can be opened and saved.
inline std::string CreateMemoryFile()
{
    const int descriptor = memfd_create("oxd", MFD_CLOEXEC);
    if (descriptor < 0)
        throw std::system_error(errno, std::generic_category(), "memfd_create");
    return "/proc/self/fd/" + std::to_string(descriptor);
}
