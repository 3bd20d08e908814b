// Writes a file in the place of an older one.
#pragma once

#include <boost/assert/source_location.hpp>

#include <array>
#include <cstddef>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>

namespace veltaris::velstdlib::util {

// A buffered file that is written from its first byte to its last. All memory is taken by the constructor: a lack of it
// must be noticed before the old file is touched, whereas the streams of the C library take theirs when they open one.
// Call in this order: OpenInPlace, Write as often as needed, Close. Not thread-safe.
class CFileWriter
{
public:
    explicit CFileWriter(const std::string& fileName);
    CFileWriter(const CFileWriter&) = delete;
    CFileWriter& operator=(const CFileWriter&) = delete;
    // Closes the file if Close was not called. What is still in the buffer is lost, and no failure is reported.
    ~CFileWriter();

    // Removes the old file and opens the new one, as OpenReplacement does. Throws CVELFileOpenException, raised at
    // `where`.
    void OpenInPlace(const boost::source_location& where);

    // Short texts are collected in a buffer. Throws std::ios_base::failure when the system does not take all bytes; the
    // file is then incomplete.
    void Write(std::span<const std::byte> bytes);
    void Write(std::string_view text) { Write(std::as_bytes(std::span(text))); }

    // Hands what was written to the system and closes the file. Throws std::ios_base::failure.
    void Close();

private:
    bool Flush();
    bool WriteNow(std::span<const std::byte> bytes);

    std::string m_fileName;
    std::filesystem::path m_path;
    int m_descriptor = -1;
    std::array<std::byte, 4096> m_buffer{};
    std::size_t m_bufferedBytes = 0;
};

} // namespace veltaris::velstdlib::util
