#include "velstdlib/util/files/FileWriter.h"

#include "velstdlib/util/VELException.h"
#include "velstdlib/util/files/FileAccess.h"
#include "velstdlib/util/files/Replacement.h"

#include <algorithm>
#include <cerrno>
#include <ios>
#include <system_error>
#include <utility>

#include <unistd.h>

namespace veltaris::velstdlib::util {

namespace {

constexpr std::size_t mostAtOnce = std::size_t{1} << 24U; // more fails on some network drives

// What a stream of the standard library throws, whose text callers know.
[[noreturn]] void ThrowWriteFailure()
{
    throw std::ios_base::failure("basic_ios::clear", std::make_error_code(std::io_errc::stream));
}

} // namespace

CFileWriter::CFileWriter(const std::string& fileName) : m_fileName(fileName), m_path(ToPath(fileName))
{
}

CFileWriter::~CFileWriter()
{
    if (m_descriptor >= 0)
        close(m_descriptor);
}

void CFileWriter::OpenInPlace(const boost::source_location& where)
{
    m_descriptor = OpenReplacement(m_path);
    if (m_descriptor < 0)
        ThrowFileOpen(m_fileName, errno, where);
}

void CFileWriter::Close()
{
    const bool flushed = Flush();
    if (close(std::exchange(m_descriptor, -1)) != 0 || !flushed)
        ThrowWriteFailure();
}

void CFileWriter::Write(std::span<const std::byte> bytes)
{
    if (bytes.size() > m_buffer.size() - m_bufferedBytes && !Flush())
        ThrowWriteFailure();
    if (bytes.size() > m_buffer.size()) {
        if (!WriteNow(bytes))
            ThrowWriteFailure();
        return;
    }
    std::ranges::copy(bytes, m_buffer.begin() + static_cast<std::ptrdiff_t>(m_bufferedBytes));
    m_bufferedBytes += bytes.size();
}

bool CFileWriter::Flush()
{
    return WriteNow(std::span(m_buffer).first(std::exchange(m_bufferedBytes, 0)));
}

bool CFileWriter::WriteNow(std::span<const std::byte> bytes)
{
    while (!bytes.empty()) {
        const auto written =
            write(m_descriptor, bytes.data(), static_cast<unsigned>(std::min(bytes.size(), mostAtOnce)));
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0)
            return false;
        bytes = bytes.subspan(static_cast<std::size_t>(written));
    }
    return true;
}

} // namespace veltaris::velstdlib::util
