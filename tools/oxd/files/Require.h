// Failures of calls into the system, as exceptions.
#pragma once

#include <cerrno>
#include <system_error>

namespace oxd {

// Throws std::system_error with errno, which the call that failed has set, unless it succeeded.
inline void Require(bool success)
{
    if (!success) {
        throw std::system_error(errno, std::generic_category());
    }
}

} // namespace oxd
