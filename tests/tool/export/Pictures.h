// Reads pictures and compares them.
#pragma once

#include <png.h>

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <functional>
#include <numeric>
#include <string>
#include <utility>
#include <vector>

template <class Number>
std::vector<Number> Numbers(const std::string& bytes)
{
    static_assert(std::endian::native == std::endian::little); // as the files are
    std::vector<Number> numbers(bytes.size() / sizeof(Number));
    std::memcpy(numbers.data(), bytes.data(), numbers.size() * sizeof(Number));
    return numbers;
}

// Line by line from the top: red, green and blue in 8 bits, or grey and opacity in 16.
template <class Level>
struct Picture
{
    std::size_t width = 0;
    std::size_t height = 0;
    std::vector<Level> levels;
};
using ColourPicture = Picture<std::uint8_t>;

// What the PNG library makes of the file; without any levels if it is no sound picture of that kind.
template <class Level>
Picture<Level> ReadPicture(const std::string& path)
{
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    png_image_begin_read_from_file(&image, path.c_str());
    std::string bytes(PNG_IMAGE_SIZE(image), '\0');
    if (image.format != (sizeof(Level) == 1 ? PNG_FORMAT_RGB : PNG_FORMAT_LINEAR_Y_ALPHA))
        png_image_free(&image);
    else if (png_image_finish_read(&image, nullptr, bytes.data(), 0, nullptr) != 0)
        return {image.width, image.height, Numbers<Level>(bytes)};
    return {};
}

inline ColourPicture Part(const ColourPicture& of, std::size_t x, std::size_t y, std::size_t width, std::size_t height)
{
    ColourPicture part{width, height, {}};
    for (std::size_t line = y; line < y + height; ++line) {
        const auto begin = of.levels.begin() + static_cast<std::ptrdiff_t>((line * of.width + x) * 3);
        part.levels.insert(part.levels.end(), begin, begin + static_cast<std::ptrdiff_t>(width * 3));
    }
    return part;
}

// On Windows, the tool takes a font of the system.
#ifdef _WIN32
inline constexpr bool isWindows = true;
#else
inline constexpr bool isWindows = false;
#endif

// Whether this machine has the font that the documented pictures were drawn with, and none that is preferred to it.
inline bool HasFontOfDocuments()
{
    bool hasFont = false;
    for (const char* const folder : {"/usr/share/fonts", "/usr/local/share/fonts"}) {
        std::error_code error;
        for (const auto& file : std::filesystem::recursive_directory_iterator(folder, error)) {
            if (file.path().filename() == "NotoSans-Regular.ttf")
                return false;
            hasFont |= file.path().filename() == "DejaVuSans.ttf";
        }
    }
    return hasFont;
}

// How many levels of two pictures differ by more than rounded sines do on different machines.
inline int CountDifferences(const ColourPicture& a, const ColourPicture& b)
{
    return std::transform_reduce(a.levels.begin(), a.levels.end(), b.levels.begin(), 0, std::plus(),
                                 [](int x, int y) { return std::abs(x - y) > 1 ? 1 : 0; });
}

// The pictures are of one size and, where the letters are those of the documents, the same. With VELOXD_APPROVE set, as
// scripts/pictures does, what is drawn becomes the approved picture: look at it then.
inline void ExpectAsApproved(const std::string& drawn, const std::string& approved)
{
    if (std::getenv("VELOXD_APPROVE") != nullptr) // NOLINT(concurrency-mt-unsafe): there is one thread
        std::filesystem::copy_file(drawn, approved, std::filesystem::copy_options::overwrite_existing);
    const auto is = ReadPicture<std::uint8_t>(drawn);
    const auto wanted = ReadPicture<std::uint8_t>(approved);
    ASSERT_EQ(std::pair(is.width, is.height), std::pair(wanted.width, wanted.height)) << approved;
    if (!isWindows && HasFontOfDocuments()) {
        EXPECT_EQ(CountDifferences(is, wanted), 0) << approved;
    }
}
