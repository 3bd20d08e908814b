// The code page of a Windows system; no other file knows of it. The functions may be called by several threads at once.
#pragma once

#ifdef _WIN32

#include <string>
#include <string_view>

namespace veltaris::velstdlib::string {

// `bytes` in the system's code page as UTF-16. Bytes that stand for nothing there become the system's substitute.
std::wstring SystemCodePageToWide(std::string_view bytes);

// Whether the code page is UTF-8, which the manifest of a program or a setting of the system can make it.
bool IsSystemCodePageUtf8();

} // namespace veltaris::velstdlib::string

#endif
