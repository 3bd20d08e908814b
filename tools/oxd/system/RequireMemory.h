// Makes sure of memory for libraries that crash, or leave something away, where they lack some.
#pragma once

#include <cstddef>
#include <new>
#include <string>

namespace oxd {

// Throws std::bad_alloc unless so many bytes can be had now. They are given back.
inline void RequireMemory(std::size_t bytes)
{
    const std::string taken(bytes, '\0');
    if (taken.size() != bytes) {
        throw std::bad_alloc();
    }
}

} // namespace oxd
