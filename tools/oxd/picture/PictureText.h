// What a picture says of itself beside what it shows, for programs and for people who find it years later.
#pragma once

#include <string>

namespace oxd {

struct PictureText
{
    std::string key;  // letters, digits and blanks only, at most 79 of them
    std::string text; // UTF-8
};

} // namespace oxd
