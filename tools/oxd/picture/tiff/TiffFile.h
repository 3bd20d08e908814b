// The file that a TIFF library writes. It remembers failures, as the library overlooks those of asking for the size and
// of closing. Not thread-safe.
#pragma once

#include <filesystem>
#include <fstream>

struct tiff;
struct TIFFOpenOptions;

namespace oxd {

// Must outlive the library's use of it.
class TiffFile
{
public:
    // Empties the file. Leaves the reason for a failure in errno.
    bool Open(const std::filesystem::path& file);

    // What the library calls it, or null where that fails.
    tiff* OpenTiff(const char* mode, TIFFOpenOptions* options);

    // Writes what is left. Fails if anything failed before, too; leaves the first reason in errno.
    bool Close();

    // What the library asks for, or -1.
    std::streamsize Read(char* bytes, std::streamsize count);
    std::streamsize Write(const char* bytes, std::streamsize count);
    std::streamoff Seek(std::streamoff offset, std::ios::seekdir from);
    std::streamoff Size();

private:
    void Note(bool success);

    std::fstream m_stream;
    bool m_hasFailed = false;
    int m_error = 0; // the value of errno then
};

} // namespace oxd
