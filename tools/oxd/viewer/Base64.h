// Bytes as letters, digits and two signs, none of which means anything in a page.
#pragma once

#include <string>
#include <string_view>

namespace oxd {

// Texts of parts can be put one behind the other if each part but the last has a multiple of this many bytes.
inline constexpr std::size_t base64Group = 3;

std::string ToBase64(std::string_view bytes);

} // namespace oxd
