#include "velstdlib/util/files/FileWriter.h"

#include "velstdlib/util/VELException.h"
#include "velstdlib/util/files/FileAccess.h"

#include <algorithm>
#include <cerrno>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace veltaris::velstdlib::util {

namespace {

constexpr std::size_t mostAtOnce = std::size_t{1} << 24U; // more fails on some network drives

int OpenEmpty(const std::filesystem::path& path)
{
#ifdef _WIN32
    return _wopen(path.c_str(), _O_WRONLY | _O_CREAT | _O_TRUNC | _O_BINARY, _S_IREAD | _S_IWRITE);
#else
    int descriptor = 0;
    do // a signal may come while a network drive answers
        descriptor = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    while (descriptor < 0 && errno == EINTR);
    return descriptor;
#endif
}

} // namespace

CFileWriter::CFileWriter(const std::string& fileName) : m_fileName(fileName), m_path(ToPath(fileName)), m_stream(this)
{
    m_stream.exceptions(std::ios::failbit | std::ios::badbit);
}

CFileWriter::~CFileWriter()
{
    if (m_descriptor >= 0)
        close(m_descriptor);
}

void CFileWriter::ReplaceFile(const boost::source_location& where)
{
    RemoveRegularFile(m_path);
    m_descriptor = OpenEmpty(m_path);
    if (m_descriptor < 0)
        ThrowFileOpen(m_fileName, errno, where);
}

void CFileWriter::Close()
{
    const bool flushed = Flush();
    if (close(std::exchange(m_descriptor, -1)) != 0 || !flushed)
        m_stream.setstate(std::ios::failbit);
}

std::streamsize CFileWriter::xsputn(const char* bytes, std::streamsize count)
{
    const auto size = static_cast<std::size_t>(count);
    if (size > m_room.size() - m_waiting && !Flush())
        return 0;
    if (size > m_room.size())
        return WriteNow(bytes, size) ? count : 0;
    std::copy_n(bytes, size, m_room.data() + m_waiting);
    m_waiting += size;
    return count;
}

bool CFileWriter::Flush()
{
    return WriteNow(m_room.data(), std::exchange(m_waiting, 0));
}

bool CFileWriter::WriteNow(const char* bytes, std::size_t count)
{
    while (count > 0) {
        const auto written = write(m_descriptor, bytes, static_cast<unsigned>(std::min(count, mostAtOnce)));
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0)
            return false;
        bytes += written;
        count -= static_cast<std::size_t>(written);
    }
    return true;
}

} // namespace veltaris::velstdlib::util
