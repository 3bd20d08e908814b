#include "api/Arguments.h"

#include <boost/throw_exception.hpp>

#include <cstring>
#include <stdexcept>

void CCall::NotNull(const void* pointer) const
{
    if (!pointer)
        Fail("Null pointer");
}

std::string CCall::Text(const char* text) const
{
    NotNull(text);
    return text;
}

void CCall::AtMost(std::uint64_t limit, std::uint64_t value) const
{
    if (value > limit)
        Fail("Value out of range. Min 0, Max ", std::to_string(limit));
}

void CCall::HasRoom(const std::string& text, std::uint64_t size) const
{
    if (text.size() > size - 1) // a size of 0 wraps around and passes
        Fail("Buffer to small. Minimum buffer size: ", std::to_string(text.size() + 1));
}

void CCall::CopyText(const std::string& text, char* buffer, std::uint64_t size) const
{
    HasRoom(text, size);
    NotNull(buffer);
    std::memcpy(buffer, text.c_str(), text.size() + 1);
}

void CCall::Fail(std::string_view reason, std::string_view value) const
{
    std::string text;
    if (!m_action.empty())
        text.append("Unable to ").append(m_action).append(". ");
    FailAlone(text.append(reason), value);
}

void CCall::FailAlone(std::string_view text, std::string_view value) const
{
    boost::throw_exception(std::runtime_error(std::string(text).append(value)), m_where);
}

void CCall::FailUnknown() const
{
    Fail("Unknown error");
}
