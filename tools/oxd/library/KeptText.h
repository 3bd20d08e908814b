// Which texts of the measurement information a file keeps as they are. Others it would silently drop or change.
#pragma once

#include <string>

namespace oxd {

// Not whether a name is changed because of others beside it.
bool IsKeptValue(const std::string& text);
bool IsKeptName(const std::string& text);

} // namespace oxd
