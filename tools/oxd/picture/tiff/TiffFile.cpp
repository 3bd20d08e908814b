#include "oxd/picture/tiff/TiffFile.h"

#include <tiffio.h>

#include <cerrno>
#include <cstdio>

namespace oxd {

namespace {

TiffFile& FileOf(thandle_t handle)
{
    return *static_cast<TiffFile*>(handle);
}

tmsize_t ReadFrom(thandle_t file, void* bytes, tmsize_t count)
{
    return FileOf(file).Read(static_cast<char*>(bytes), count);
}

tmsize_t WriteTo(thandle_t file, void* bytes, tmsize_t count)
{
    return FileOf(file).Write(static_cast<const char*>(bytes), count);
}

toff_t SeekIn(thandle_t file, toff_t offset, int from)
{
    const auto start = from == SEEK_SET ? std::ios::beg : from == SEEK_CUR ? std::ios::cur : std::ios::end;
    return static_cast<toff_t>(FileOf(file).Seek(static_cast<std::streamoff>(offset), start));
}

toff_t SizeOf(thandle_t file)
{
    return static_cast<toff_t>(FileOf(file).Size());
}

// The file is closed where its failure can be told.
int LeaveOpen(thandle_t)
{
    return 0;
}

} // namespace

bool TiffFile::Open(const std::filesystem::path& file)
{
    m_stream.open(file, std::ios::in | std::ios::out | std::ios::trunc | std::ios::binary);
    return m_stream.is_open();
}

tiff* TiffFile::OpenTiff(const char* mode, TIFFOpenOptions* options)
{
    return TIFFClientOpenExt("", mode, this, ReadFrom, WriteTo, SeekIn, LeaveOpen, SizeOf, nullptr, nullptr, options);
}

bool TiffFile::Close()
{
    m_stream.close();
    Note(m_stream.good());
    errno = m_error;
    return !m_hasFailed;
}

// Keeps the first reason.
void TiffFile::Note(bool success)
{
    if (!success && !m_hasFailed) {
        m_hasFailed = true;
        m_error = errno;
    }
}

std::streamsize TiffFile::Read(char* bytes, std::streamsize count)
{
    m_stream.read(bytes, count);
    Note(m_stream.good());
    return m_stream.good() ? count : -1;
}

std::streamsize TiffFile::Write(const char* bytes, std::streamsize count)
{
    m_stream.write(bytes, count);
    Note(m_stream.good());
    return m_stream.good() ? count : -1;
}

// Reading and writing share one place.
std::streamoff TiffFile::Seek(std::streamoff offset, std::ios::seekdir from)
{
    const std::streamoff place = m_stream.rdbuf()->pubseekoff(offset, from);
    Note(place >= 0);
    return place;
}

std::streamoff TiffFile::Size()
{
    const std::streamoff place = Seek(0, std::ios::cur);
    const std::streamoff size = Seek(0, std::ios::end);
    Seek(place, std::ios::beg);
    return size;
}

} // namespace oxd
