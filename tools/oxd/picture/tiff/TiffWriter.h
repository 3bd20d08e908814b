// Writes a TIFF file of one number for each pixel, row by row, so that a picture of any size takes little memory.
#pragma once

#include "oxd/files/OutputFile.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

struct tiff;

namespace oxd {

class TiffFile;

enum class TiffSample
{
    Int16,
    Int32,
    Float32
};

// A plain value.
struct TiffShape
{
    std::uint64_t width = 0;
    std::uint64_t height = 0;
    TiffSample sample = TiffSample::Float32;
    std::string description = {}; // ASCII
    struct PerCentimetre
    {
        double x, y;
    };
    std::optional<PerCentimetre> resolution = {}; // pixels; unsaid where they have no length
};

// Of the TIFF library, such as "4.5.0"; empty if this build has none.
std::string TiffVersion();

// Call WriteRow once for each row from the top, and Finish. The output must outlive the writer, and is for the caller
// to close. The calls throw a Failure if the file takes no more.
class TiffWriter
{
public:
    // Throws a Failure if the picture is too large for the format, or if this build cannot write TIFF files.
    TiffWriter(OutputFile& output, const TiffShape& shape);
    ~TiffWriter();
    TiffWriter(const TiffWriter&) = delete;
    TiffWriter& operator=(const TiffWriter&) = delete;

    // `samples` must be a row of the kind that the shape says, in this machine's order of bytes. The encoder may change
    // them.
    void WriteRow(void* samples);
    void Finish();

private:
    void Open(bool isLarge);
    void Require(bool done) const;

    OutputFile& m_output;
    std::unique_ptr<TiffFile> m_file;
    tiff* m_tiff = nullptr;
    std::uint32_t m_row = 0;
};

} // namespace oxd
