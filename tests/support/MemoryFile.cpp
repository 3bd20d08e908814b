#include "support/MemoryFile.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

namespace {

void Require(bool done)
{
    if (!done)
        throw std::system_error(errno, std::generic_category(), "file in memory");
}

} // namespace

CMemoryFile::CMemoryFile()
    : m_descriptor(memfd_create("oxd", MFD_CLOEXEC)), m_path("/proc/self/fd/" + std::to_string(m_descriptor))
{
    Require(m_descriptor >= 0);
}

CMemoryFile::~CMemoryFile()
{
    close(m_descriptor);
}

void CMemoryFile::Write(std::string_view bytes) const
{
    Require(ftruncate(m_descriptor, 0) == 0);
    Require(pwrite(m_descriptor, bytes.data(), bytes.size(), 0) == static_cast<ssize_t>(bytes.size()));
}

std::string CMemoryFile::Read() const
{
    std::string bytes(static_cast<std::size_t>(lseek(m_descriptor, 0, SEEK_END)), '\0');
    Require(pread(m_descriptor, bytes.data(), bytes.size(), 0) == static_cast<ssize_t>(bytes.size()));
    return bytes;
}
