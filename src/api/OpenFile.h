// The streams that data files are read and written through.
#pragma once

#include <boost/assert/source_location.hpp>

#include <array>
#include <fstream>
#include <string>

// A stream that throws std::ios_base::failure when it fails, knows no locale but the classic one, and has a buffer of
// its own. Call close() when done: a failure to close throws, whereas the destructor keeps quiet.
class COpenFile
{
public:
    // Each throws CVELFileOpenException, raised at `where`, unless the path leads to a file that it can open. What is
    // no regular file is not read from.
    static COpenFile ForReading(const std::string& path, const boost::source_location& where);
    static COpenFile ForWriting(const std::string& path, const boost::source_location& where);

    COpenFile(const COpenFile&) = delete;
    COpenFile& operator=(const COpenFile&) = delete;
    ~COpenFile() = default;

    std::fstream& Stream() { return m_stream; }

private:
    COpenFile(const std::string& path, std::ios::openmode mode, const boost::source_location& where);

    std::array<char, 4096> m_buffer{}; // outlives the stream, which may flush it when it is destroyed
    std::fstream m_stream;
};

// Refuses, as a failed open would, a file that has no write permission at all.
void CheckWritable(const std::string& path, const boost::source_location& where);
