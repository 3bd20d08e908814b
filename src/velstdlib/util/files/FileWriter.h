// Writing a file where an older one was.
#pragma once

#include <boost/assert/source_location.hpp>

#include <array>
#include <cstddef>
#include <filesystem>
#include <ostream>
#include <streambuf>
#include <string>

namespace veltaris::velstdlib::util {

// Takes all its memory when it is made: running out of it must come before the old file is touched, and the C library
// would only take memory when the new one is opened.
class CFileWriter : private std::streambuf
{
public:
    explicit CFileWriter(const std::string& fileName);
    CFileWriter(const CFileWriter&) = delete;
    CFileWriter& operator=(const CFileWriter&) = delete;
    ~CFileWriter() override; // a failure to close is not told

    // Removes the old file, as RemoveRegularFile does, and opens the new one. Throws CVELFileOpenException, raised at
    // `where`.
    void ReplaceFile(const boost::source_location& where);

    // For whole pieces: single characters are refused. Throws std::ios_base::failure when it fails.
    std::ostream& Stream() { return m_stream; }

    // What was written is in the system's hands then. Throws std::ios_base::failure.
    void Close();

private:
    std::streamsize xsputn(const char* bytes, std::streamsize count) override;
    bool Flush();
    bool WriteNow(const char* bytes, std::size_t count);

    std::string m_fileName;
    std::filesystem::path m_path;
    int m_descriptor = -1;
    std::array<char, 4096> m_room{}; // small pieces are collected here
    std::size_t m_waiting = 0;       // bytes of it
    std::ostream m_stream;
};

} // namespace veltaris::velstdlib::util
