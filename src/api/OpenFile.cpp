#include "api/OpenFile.h"

#include "velstdlib/util/VELException.h"
#include "velstdlib/util/files/FileAccess.h"

#include <cerrno>
#include <filesystem>
#include <system_error>

namespace {

namespace fs = std::filesystem;
using veltaris::velstdlib::util::ThrowFileOpen;
using veltaris::velstdlib::util::ToPath;

// A directory opens like an endless file on one system, and is denied without a reason on another.
void CheckIsNoDirectory(const std::string& path, const boost::source_location& where)
{
    std::error_code error;
    if (fs::is_directory(ToPath(path), error))
        ThrowFileOpen(path, EISDIR, where);
}

// Opening a pipe would wait for its other end.
void CheckIsNoDevice(const std::string& path, const boost::source_location& where)
{
    if (veltaris::velstdlib::util::IsDevice(path))
        ThrowFileOpen(path, EINVAL, where);
}

} // namespace

COpenFile::COpenFile(const std::string& path, const boost::source_location& where)
{
    CheckIsNoDirectory(path, where);
    CheckIsNoDevice(path, where);
    m_stream.rdbuf()->pubsetbuf(m_buffer.data(),
                                static_cast<std::streamsize>(m_buffer.size())); // heeded before opening only
    errno = 0;
    m_stream.open(ToPath(path), std::ios::binary);
    const int error = errno;
    if (!m_stream)
        ThrowFileOpen(path, error, where);
    m_stream.exceptions(std::ios::failbit | std::ios::badbit);
    m_stream.imbue(std::locale::classic());
}

void CheckWritable(const std::string& path, const boost::source_location& where)
{
    if (veltaris::velstdlib::util::IsWriteProtected(path))
        veltaris::velstdlib::util::ThrowProtectedOpen(path, where);
    CheckIsNoDirectory(path, where);
}
