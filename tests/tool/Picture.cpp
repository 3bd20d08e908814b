#include "tool/Picture.h"

#include <png.h>

#include <csetjmp>
#include <cstdio>

namespace {

void Decode(png_structp png, png_infop info, std::FILE* file, Picture& picture)
{
    if (setjmp(png_jmpbuf(png)) != 0) // NOLINT(cert-err52-cpp): the decoder knows no exceptions
        return;
    png_init_io(png, file);
    png_read_png(png, info, PNG_TRANSFORM_IDENTITY, nullptr);
    picture.width = png_get_image_width(png, info);
    picture.height = png_get_image_height(png, info);
    picture.bits = png_get_bit_depth(png, info);
    picture.channels = png_get_channels(png, info);
    auto* const rows = png_get_rows(png, info);
    for (std::size_t row = 0; row < picture.height; ++row)
        picture.rows.emplace_back(rows[row], rows[row] + png_get_rowbytes(png, info));
}

} // namespace

std::vector<std::uint16_t> Picture::Levels(std::size_t row) const
{
    std::vector<std::uint16_t> levels;
    for (std::size_t i = 0; i + 1 < rows.at(row).size(); i += 2)
        levels.push_back(static_cast<std::uint16_t>(rows[row][i] << 8 | rows[row][i + 1]));
    return levels;
}

std::vector<std::uint8_t> Picture::Pixel(std::size_t x, std::size_t y) const
{
    return Part(x, y, 1, 1).front();
}

std::vector<std::vector<std::uint8_t>> Picture::Part(std::size_t x, std::size_t y, std::size_t columns,
                                                     std::size_t lines) const
{
    const auto bytes = static_cast<std::size_t>(bits * channels / 8);
    std::vector<std::vector<std::uint8_t>> part;
    for (std::size_t line = y; line < y + lines; ++line) {
        const auto begin = rows.at(line).begin() + static_cast<std::ptrdiff_t>(x * bytes);
        part.emplace_back(begin, begin + static_cast<std::ptrdiff_t>(columns * bytes));
    }
    return part;
}

Picture ReadPicture(const std::string& path)
{
    Picture picture;
    png_structp png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    if (std::FILE* const file = std::fopen(path.c_str(), "rb")) {
        Decode(png, info, file, picture);
        (void)std::fclose(file);
    }
    png_destroy_read_struct(&png, &info, nullptr);
    return picture;
}
