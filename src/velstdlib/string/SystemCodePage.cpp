#include "velstdlib/string/SystemCodePage.h"

#ifdef _WIN32

#include <boost/throw_exception.hpp>

#include <limits>
#include <stdexcept>

#include <windows.h>

namespace veltaris::velstdlib::string {

std::wstring SystemCodePageToWide(std::string_view bytes)
{
    if (bytes.size() > static_cast<std::size_t>(std::numeric_limits<int>::max()))
        BOOST_THROW_EXCEPTION(std::length_error("Text too long for the system"));
    const auto convert = [&](wchar_t* wide, int size) {
        return MultiByteToWideChar(CP_ACP, 0, bytes.data(), static_cast<int>(bytes.size()), wide, size);
    };
    std::wstring wide(static_cast<std::size_t>(convert(nullptr, 0)), L'\0');
    convert(wide.data(), static_cast<int>(wide.size()));
    return wide;
}

bool IsSystemCodePageUtf8()
{
    return GetACP() == CP_UTF8;
}

} // namespace veltaris::velstdlib::string

#endif
