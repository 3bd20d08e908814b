#include "oxd/viewer/Base64.h"

#include <algorithm>
#include <cstdint>

namespace oxd {

std::string ToBase64(std::string_view bytes)
{
    constexpr std::string_view digits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    text.reserve((bytes.size() + base64Group - 1) / base64Group * 4);
    for (; !bytes.empty(); bytes.remove_prefix(std::min(base64Group, bytes.size()))) {
        std::uint32_t bits = 0;
        for (std::size_t i = 0; i < base64Group; ++i) {
            bits = bits << 8U | (i < bytes.size() ? static_cast<unsigned char>(bytes[i]) : 0U);
        }
        for (std::size_t i = 0; i < 4; ++i) {
            text += i <= bytes.size() ? digits[bits >> (18 - 6 * i) & 63U] : '=';
        }
    }
    return text;
}

} // namespace oxd
