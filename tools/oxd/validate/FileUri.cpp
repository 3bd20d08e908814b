#include "oxd/validate/FileUri.h"

#include <filesystem>
#include <string_view>

namespace oxd {

namespace {

constexpr std::string_view plain = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~/";

std::string Encoded(const std::string& path)
{
    constexpr const char* digits = "0123456789ABCDEF";
    std::string text;
    for (const char c : path) {
        if (plain.find(c) != std::string_view::npos) {
            text += c;
        } else {
            const auto byte = static_cast<unsigned char>(c);
            text.append("%").append(1, digits[byte / 16]).append(1, digits[byte % 16]);
        }
    }
    return text;
}

} // namespace

std::string FileUri(const std::string& file)
{
    const std::filesystem::path path(std::u8string(file.begin(), file.end()));
    const std::u8string slashed = path.generic_u8string();
    std::string name = Encoded({slashed.begin(), slashed.end()});
    if (!path.is_absolute()) {
        return name;
    }
    return name.starts_with("//") ? "file:" + name : (name.starts_with("/") ? "file://" : "file:///") + name;
}

} // namespace oxd
