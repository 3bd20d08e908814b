// Names of files between UTF-8, in which the tool has all texts, and the paths of the system.
#pragma once

#include <filesystem>
#include <string>

namespace oxd {

inline std::filesystem::path ToPath(const std::string& utf8)
{
    return std::u8string(utf8.begin(), utf8.end());
}

inline std::string ToUtf8(const std::filesystem::path& path)
{
    const std::u8string utf8 = path.u8string();
    return {utf8.begin(), utf8.end()};
}

} // namespace oxd
