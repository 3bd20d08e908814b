// A PNG file as a decoder of its own sees it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

struct Picture
{
    std::size_t width = 0;
    std::size_t height = 0;
    int bits = 0;
    int channels = 0;
    std::vector<std::vector<std::uint8_t>> rows; // from the top

    std::vector<std::uint16_t> Levels(std::size_t row) const; // of 16 bits of grey
    std::vector<std::uint8_t> Pixel(std::size_t x, std::size_t y) const;

    // The rows of a part, from left to right. Inside the picture.
    std::vector<std::vector<std::uint8_t>> Part(std::size_t x, std::size_t y, std::size_t columns,
                                                std::size_t lines) const;
};

// Without any rows if the file is no sound picture.
Picture ReadPicture(const std::string& path);
