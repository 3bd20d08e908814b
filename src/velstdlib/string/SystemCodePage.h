// What the code page of a Windows system says; nothing else knows of it.
#pragma once

#ifdef _WIN32

#include <string>
#include <string_view>

namespace veltaris::velstdlib::string {

// `bytes` in the system's code page as UTF-16. Bytes that stand for nothing there become the system's substitute.
std::wstring SystemCodePageToWide(std::string_view bytes);

// As a program's manifest or a setting of the system can make it.
bool IsSystemCodePageUtf8();

} // namespace veltaris::velstdlib::string

#endif
