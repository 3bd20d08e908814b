// A flat JSON object of texts in one line.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>

namespace oxd {

// The members in their order, with a line feed at the end. Bytes that are not UTF-8 become U+FFFD.
std::string JsonLine(std::initializer_list<std::pair<std::string_view, std::string_view>> members);

} // namespace oxd
