// Reading a file from disk.
#pragma once

#include <boost/assert/source_location.hpp>

#include <array>
#include <fstream>
#include <string>

namespace veltaris::velstdlib::util {

// An open file to read from, on disk for as long as the object lives. Its stream throws std::ios_base::failure when an
// operation on it fails, reads numbers in the classic locale whatever the program has set, and has a buffer of its own.
// Call Stream().close() when done: a failure to close throws then, whereas the destructor ignores it.
// Not thread-safe.
class CFileReader
{
public:
    // Throws CVELFileOpenException, raised at `where`, unless the path leads to a regular file that can be opened.
    CFileReader(const std::string& path, const boost::source_location& where);
    CFileReader(const CFileReader&) = delete;
    CFileReader& operator=(const CFileReader&) = delete;
    ~CFileReader() = default;

    std::ifstream& Stream() { return m_stream; }

private:
    std::array<char, 4096> m_buffer{}; // declared first, because the stream uses it until it is destroyed
    std::ifstream m_stream;
};

} // namespace veltaris::velstdlib::util
