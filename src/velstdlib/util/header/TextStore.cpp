#include "velstdlib/util/header/TextStore.h"

#include <algorithm>
#include <utility>

namespace veltaris::velstdlib::util {

std::string_view CTextStore::Reset(std::string text)
{
    m_rest.release();
    m_first = std::move(text);
    return m_first;
}

std::string_view CTextStore::Keep(std::string_view text)
{
    char* const kept = Allocate(text.size());
    std::ranges::copy(text, kept);
    return {kept, text.size()};
}

std::string_view CTextStore::KeepLine(std::string_view key, std::string_view value)
{
    const std::size_t length = key.size() + 1 + value.size();
    char* const line = Allocate(length);
    char* end = std::ranges::copy(key, line).out;
    *end++ = '=';
    std::ranges::copy(value, end);
    return {line, length};
}

} // namespace veltaris::velstdlib::util
