#include "oxd/files/Reopen.h"

#include "oxd/files/FilePath.h"
#include "oxd/system/Failure.h"

#include <cerrno>
#include <new>

namespace oxd {

std::ifstream Reopen(const std::string& file)
{
    errno = 0;
    std::ifstream stream(ToPath(file), std::ios::binary);
    if (!stream.is_open() && errno == ENOMEM) {
        throw std::bad_alloc();
    }
    if (!stream.is_open()) {
        throw Failure(ExitCode::CannotOpen, file, "cannot be read again");
    }
    return stream;
}

} // namespace oxd
