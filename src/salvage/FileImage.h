// A file as it may have been: its header in another wording, and the samples as they are.
#pragma once

#include <cstddef>
#include <cstdint>
#include <istream>
#include <span>
#include <streambuf>
#include <string>
#include <utility>
#include <vector>

namespace veltaris::salvage {

// A part of a file, in bytes.
struct FileSpan
{
    std::uint64_t offset = 0;
    std::uint64_t bytes = 0;
};

// A plain value.
struct FileImage
{
    std::string header; // with its end mark
    FileSpan samples;   // where they stand in the file
};

// Reads an image: its header, and behind it the samples from the file. Fails to read what the file fails to read.
class CImageBuffer : public std::streambuf
{
public:
    // The file must outlive the buffer, which moves its position.
    CImageBuffer(std::istream& file, FileImage image);

protected:
    int_type underflow() override;
    pos_type seekoff(off_type offset, std::ios_base::seekdir from, std::ios_base::openmode which) override;
    pos_type seekpos(pos_type position, std::ios_base::openmode which) override;

private:
    std::uint64_t Size() const { return m_image.header.size() + m_image.samples.bytes; }

    std::istream& m_file;
    FileImage m_image;
    std::vector<char> m_chunk;
    std::uint64_t m_end = 0; // of what can be got without asking again, in the image
};

// The same as a stream. Not thread-safe.
class CImageStream : public std::istream
{
public:
    CImageStream(std::istream& file, FileImage image) : std::istream(nullptr), m_buffer(file, std::move(image))
    {
        rdbuf(&m_buffer);
    }

private:
    CImageBuffer m_buffer;
};

// Both read fewer bytes where the file ends, and throw std::system_error when it cannot be read.
std::size_t ReadInto(std::istream& file, std::uint64_t offset, std::span<std::byte> bytes);
std::string ReadPart(std::istream& file, FileSpan part);

} // namespace veltaris::salvage
