// Writes a PNG file with 16 bits of grey, row by row, so that a picture of any size takes little memory.
#pragma once

#include "oxd/files/OutputFile.h"
#include "oxd/picture/PictureText.h"

#include <png.h>

#include <cstdint>
#include <string>
#include <vector>

namespace oxd {

// Call WriteHeader once, WriteRow once for each row from the top, and Finish. The output must outlive the writer.
// The calls throw a Failure if the file takes no more, and std::runtime_error if the encoder refuses the picture.
class PngWriter
{
public:
    // Throws a Failure if the picture is too large for the format.
    PngWriter(OutputFile& output, std::uint64_t width, std::uint64_t height);
    ~PngWriter();
    PngWriter(const PngWriter&) = delete;
    PngWriter& operator=(const PngWriter&) = delete;

    // Declares level 0 transparent.
    void WriteHeader(const std::vector<PictureText>& texts);

    // `levels` must be as many as the picture is wide.
    void WriteRow(const std::vector<std::uint16_t>& levels);
    void Finish();

private:
    template <typename Step>
    void Encode(Step step);

    OutputFile& m_output;
    std::string m_encoded; // not yet in the file
    std::uint64_t m_width;
    std::uint64_t m_height;
    png_structp m_png;
    png_infop m_info;
};

} // namespace oxd
