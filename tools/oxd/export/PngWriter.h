// Writes a PNG file in 16 bits of grey, row by row from the top.
#pragma once

#include "oxd/system/OutputFile.h"

#include <png.h>

#include <cstdint>
#include <string>
#include <vector>

namespace oxd {

struct PngText
{
    std::string key; // letters, digits and blanks
    std::string text;
};

// Throws a Failure if the picture is too large for the format or the file takes no more.
class PngWriter
{
public:
    PngWriter(OutputFile& output, std::uint64_t width, std::uint64_t height);
    ~PngWriter();
    PngWriter(const PngWriter&) = delete;
    PngWriter& operator=(const PngWriter&) = delete;

    // Level 0 is transparent.
    void WriteHeader(const std::vector<PngText>& texts);
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
