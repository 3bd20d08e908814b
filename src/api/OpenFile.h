// Data files as they are opened.
#pragma once

#include <boost/assert/source_location.hpp>

#include <array>
#include <fstream>
#include <string>

// A stream to read from that throws std::ios_base::failure when it fails, knows no locale but the classic one, and has
// a buffer of its own. Call close() when done: a failure to close throws, whereas the destructor keeps quiet.
class COpenFile
{
public:
    // Throws CVELFileOpenException, raised at `where`, unless the path leads to a regular file that can be opened.
    COpenFile(const std::string& path, const boost::source_location& where);
    COpenFile(const COpenFile&) = delete;
    COpenFile& operator=(const COpenFile&) = delete;
    ~COpenFile() = default;

    std::ifstream& Stream() { return m_stream; }

private:
    std::array<char, 4096> m_buffer{}; // outlives the stream
    std::ifstream m_stream;
};

// Refuses, as a failed open would, a folder and a file that has no write permission at all.
void CheckWritable(const std::string& path, const boost::source_location& where);
