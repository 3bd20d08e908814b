// Texts in PNG files, for programs that read them.
#pragma once

#include <string>
#include <vector>

namespace oxd {

struct PngText
{
    std::string key;  // letters, digits and blanks only, at most 79 of them
    std::string text; // UTF-8
};

// The bytes of a PNG file with these texts, uncompressed, in front of its picture. `png` must be sound.
std::string WithTexts(const std::string& png, const std::vector<PngText>& texts);

} // namespace oxd
