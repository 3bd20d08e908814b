#include "oxd/library/KeptText.h"

#include "oxd/system/Text.h"

namespace oxd {

bool IsKeptValue(const std::string& text)
{
    constexpr const char* dropped = " \t\v\f"; // at the end of a line
    return !text.empty() && text.find_last_not_of(dropped) + 1 == text.size() &&
           text.find_first_of("\r\n") == std::string::npos && text.find("#!") == std::string::npos &&
           text == ValidUtf8(text);
}

bool IsKeptName(const std::string& text)
{
    return IsKeptValue(text) && text.find('=') == std::string::npos;
}

} // namespace oxd
