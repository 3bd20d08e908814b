// Bytes as hexadecimal digits.
#pragma once

#include <span>
#include <string>

namespace oxd {

inline std::string HexText(std::span<const unsigned char> bytes)
{
    constexpr const char* digits = "0123456789abcdef";
    std::string text;
    for (const unsigned char byte : bytes) {
        text.append(1, digits[byte >> 4]).append(1, digits[byte & 0xF]);
    }
    return text;
}

} // namespace oxd
