#include "oxd/picture/PngText.h"

#include <zlib.h>

#include <cstdint>

namespace oxd {

namespace {

// Chunks have their numbers highest byte first.
std::string BigEndian(std::uint32_t number)
{
    std::string bytes;
    for (int shift = 24; shift >= 0; shift -= 8) {
        bytes += static_cast<char>(number >> shift & 0xFF);
    }
    return bytes;
}

// A chunk of international text: key, no compression, no language and no translated key.
std::string TextChunk(const PngText& text)
{
    const std::string content = "iTXt" + text.key + std::string(5, '\0') + text.text;
    const std::uint32_t length = static_cast<std::uint32_t>(content.size()) - 4; // without its kind
    const auto sum = crc32(0, reinterpret_cast<const Bytef*>(content.data()), static_cast<uInt>(content.size()));
    return BigEndian(length) + content + BigEndian(static_cast<std::uint32_t>(sum));
}

} // namespace

std::string WithTexts(const std::string& png, const std::vector<PngText>& texts)
{
    constexpr std::size_t headerEnd = 33; // of the mark of such files and of the chunk that gives the size
    std::string whole = png.substr(0, headerEnd);
    for (const PngText& text : texts) {
        whole += TextChunk(text);
    }
    return whole.append(png, headerEnd);
}

} // namespace oxd
