// Texts of a header as the C interface gives them.
#pragma once

#include <string>

namespace oxd {

// Up to the first NUL, which ends a text there: what the header shows and what the interface finds have one name.
inline std::string UntilNul(const std::string& text)
{
    return text.substr(0, text.find('\0'));
}

} // namespace oxd
