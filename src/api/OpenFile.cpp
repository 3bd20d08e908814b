#include "api/OpenFile.h"

#include "velstdlib/util/FileAccess.h"
#include "velstdlib/util/VELException.h"

#include <cerrno>
#include <filesystem>
#include <system_error>

namespace {

namespace fs = std::filesystem;
using veltaris::velstdlib::util::ThrowFileOpen;
using veltaris::velstdlib::util::ToPath;

// A directory opens like an endless file on one system, and is denied without a reason on another.
fs::file_type TypeUnlessDirectory(const std::string& path, const boost::source_location& where)
{
    std::error_code error;
    const auto type = fs::status(ToPath(path), error).type();
    if (type == fs::file_type::directory)
        ThrowFileOpen(path, EISDIR, where);
    return type;
}

// Opening a pipe would wait for its other end.
void CheckReadable(const std::string& path, const boost::source_location& where)
{
    const auto type = TypeUnlessDirectory(path, where);
    if (type != fs::file_type::regular && type != fs::file_type::not_found && type != fs::file_type::none)
        ThrowFileOpen(path, EINVAL, where);
}

} // namespace

COpenFile COpenFile::ForReading(const std::string& path, const boost::source_location& where)
{
    CheckReadable(path, where);
    return {path, std::ios::in | std::ios::binary, where};
}

COpenFile COpenFile::ForWriting(const std::string& path, const boost::source_location& where)
{
    TypeUnlessDirectory(path, where);
    return {path, std::ios::out | std::ios::trunc | std::ios::binary, where};
}

COpenFile::COpenFile(const std::string& path, std::ios::openmode mode, const boost::source_location& where)
{
    m_stream.rdbuf()->pubsetbuf(m_buffer.data(),
                                static_cast<std::streamsize>(m_buffer.size())); // heeded before opening only
    errno = 0;
    m_stream.open(ToPath(path), mode);
    const int error = errno;
    if (!m_stream)
        ThrowFileOpen(path, error, where);
    m_stream.exceptions(std::ios::failbit | std::ios::badbit);
    m_stream.imbue(std::locale::classic());
}

void CheckWritable(const std::string& path, const boost::source_location& where)
{
    if (veltaris::velstdlib::util::IsWriteProtected(path))
        ThrowFileOpen(path, EACCES, where);
}

void RemoveRegularFile(const std::string& path)
{
    const fs::path file = ToPath(path);
    std::error_code error;
    if (fs::is_regular_file(fs::symlink_status(file, error)))
        fs::remove(file, error);
}
