#include "velstdlib/util/files/FileReader.h"

#include "velstdlib/util/VELException.h"
#include "velstdlib/util/files/FileAccess.h"
#include "velstdlib/util/files/OpenChecks.h"

#include <cerrno>
#include <locale>

namespace veltaris::velstdlib::util {

CFileReader::CFileReader(const std::string& path, const boost::source_location& where)
{
    CheckReadable(path, where);
    // A stream heeds a new buffer only before it is opened.
    m_stream.rdbuf()->pubsetbuf(m_buffer.data(), static_cast<std::streamsize>(m_buffer.size()));
    errno = 0;
    m_stream.open(ToPath(path), std::ios::binary);
    const int error = errno;
    if (!m_stream)
        ThrowFileOpen(path, error, where);
    m_stream.exceptions(std::ios::failbit | std::ios::badbit);
    m_stream.imbue(std::locale::classic());
}

} // namespace veltaris::velstdlib::util
