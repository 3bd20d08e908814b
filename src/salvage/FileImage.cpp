#include "salvage/FileImage.h"

#include <algorithm>
#include <cerrno>
#include <system_error>
#include <utility>

namespace veltaris::salvage {

namespace {

constexpr std::size_t chunkBytes = 65'536;

} // namespace

std::size_t ReadInto(std::istream& file, std::uint64_t offset, std::span<std::byte> bytes)
try {
    file.clear();
    file.seekg(static_cast<std::streamoff>(offset));
    file.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    if (file.fail() && !file.eof())
        throw std::system_error(EIO, std::generic_category());
    return static_cast<std::size_t>(file.gcount());
} catch (const std::ios_base::failure&) {
    if (!file.eof())
        throw std::system_error(EIO, std::generic_category());
    return static_cast<std::size_t>(file.gcount());
}

std::string ReadPart(std::istream& file, FileSpan part)
{
    std::string bytes(part.bytes, '\0');
    bytes.resize(ReadInto(file, part.offset, std::as_writable_bytes(std::span(bytes))));
    return bytes;
}

CImageBuffer::CImageBuffer(std::istream& file, FileImage image) : m_file(file), m_image(std::move(image))
{
}

CImageBuffer::int_type CImageBuffer::underflow()
{
    const std::uint64_t headerBytes = m_image.header.size();
    if (m_end < headerBytes) {
        char* const begin = m_image.header.data();
        setg(begin, begin + m_end, begin + headerBytes);
        m_end = headerBytes;
    } else {
        m_chunk.resize(chunkBytes);
        const auto count = static_cast<std::size_t>(std::min<std::uint64_t>(chunkBytes, Size() - m_end));
        const std::size_t got = ReadInto(m_file, m_image.samples.offset + (m_end - headerBytes),
                                         std::as_writable_bytes(std::span(m_chunk)).first(count));
        setg(m_chunk.data(), m_chunk.data(), m_chunk.data() + got);
        m_end += got;
    }
    return gptr() == egptr() ? traits_type::eof() : traits_type::to_int_type(*gptr());
}

CImageBuffer::pos_type CImageBuffer::seekoff(off_type offset, std::ios_base::seekdir from,
                                             std::ios_base::openmode which)
{
    const auto here = static_cast<off_type>(m_end) - (egptr() - gptr());
    if (from == std::ios_base::cur && offset == 0)
        return here;
    const off_type base =
        from == std::ios_base::beg ? 0 : (from == std::ios_base::cur ? here : static_cast<off_type>(Size()));
    return seekpos(base + offset, which);
}

CImageBuffer::pos_type CImageBuffer::seekpos(pos_type position, std::ios_base::openmode)
{
    if (position < 0 || static_cast<std::uint64_t>(position) > Size())
        return static_cast<off_type>(-1);
    setg(nullptr, nullptr, nullptr);
    m_end = static_cast<std::uint64_t>(position);
    return position;
}

} // namespace veltaris::salvage
