#include "oxd/picture/PngText.h"

#include "velstdlib/math/Round.h"

#include <zlib.h>

#include <cstdint>

namespace oxd {

namespace {

using veltaris::velstdlib::math::vel_round;

// Chunks have their numbers highest byte first.
std::string BigEndian(std::uint32_t number)
{
    std::string bytes;
    for (int shift = 24; shift >= 0; shift -= 8) {
        bytes += static_cast<char>(number >> shift & 0xFF);
    }
    return bytes;
}

// The content of a chunk begins with its kind, which its length does not count.
std::string Chunk(const std::string& content)
{
    const std::uint32_t length = static_cast<std::uint32_t>(content.size()) - 4;
    const auto sum = crc32(0, reinterpret_cast<const Bytef*>(content.data()), static_cast<uInt>(content.size()));
    return BigEndian(length) + content + BigEndian(static_cast<std::uint32_t>(sum));
}

// International text: key, no compression, no language and no translated key.
std::string TextChunk(const PictureText& text)
{
    return Chunk("iTXt" + text.key + std::string(5, '\0') + text.text);
}

// Pixels per metre in both directions.
std::string ResolutionChunk(double perInch)
{
    constexpr double inch = 0.0254; // metres
    const std::string pixels = BigEndian(static_cast<std::uint32_t>(vel_round(perInch / inch)));
    return Chunk("pHYs" + pixels + pixels + '\1');
}

} // namespace

std::string WithTexts(const std::string& png, const std::vector<PictureText>& texts, std::optional<double> resolution)
{
    constexpr std::size_t headerEnd = 33; // of the mark of such files and of the chunk that gives the size
    std::string whole = png.substr(0, headerEnd);
    for (const PictureText& text : texts) {
        whole += TextChunk(text);
    }
    whole += resolution ? ResolutionChunk(*resolution) : "";
    return whole.append(png, headerEnd);
}

} // namespace oxd
