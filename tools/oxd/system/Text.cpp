#include "oxd/system/Text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <string_view>

namespace oxd {

namespace {

constexpr int significantDigits = 6;

// The number of bytes of a character that begins with `byte`; 0 if none does.
std::size_t Utf8Length(unsigned char byte)
{
    return byte < 0x80 ? 1 : byte < 0xC2 ? 0 : byte < 0xE0 ? 2 : byte < 0xF0 ? 3 : byte < 0xF5 ? 4 : 0;
}

// Whether a code stands for a character: it is not half of a surrogate pair, not reserved, and not encoded in more
// bytes than it takes.
bool IsCharacter(std::uint32_t code, std::size_t length)
{
    constexpr std::array<std::uint32_t, 5> smallest{0, 0, 0x80, 0x800, 0x10000};
    const bool isHalf = code >= 0xD800 && code <= 0xDFFF;
    const bool isReserved = (code & 0xFFFE) == 0xFFFE || (code >= 0xFDD0 && code <= 0xFDEF);
    return code >= smallest[length] && code <= 0x10FFFF && !isHalf && !isReserved;
}

// The number of bytes of the character at the beginning; 0 if there is none.
std::size_t LeadingCharacter(std::string_view text)
{
    const auto first = static_cast<unsigned char>(text.front());
    const std::size_t length = Utf8Length(first);
    if (length < 2 || length > text.size()) {
        return length == 1 ? 1 : 0;
    }
    std::uint32_t code = first & (0xFFU >> (length + 1));
    for (const char byte : text.substr(1, length - 1)) {
        if ((byte & 0xC0) != 0x80) {
            return 0;
        }
        code = code << 6 | (static_cast<unsigned char>(byte) & 0x3FU);
    }
    return IsCharacter(code, length) ? length : 0;
}

bool IsValidUtf8(std::string_view text)
{
    std::size_t length = 1;
    for (; !text.empty() && length > 0; text.remove_prefix(length)) {
        length = LeadingCharacter(text);
    }
    return length > 0;
}

bool IsControl(char byte)
{
    return (byte >= 0 && byte < ' ') || byte == 0x7F;
}

// In UTF-8, all bytes of a character but the first are 10xxxxxx.
bool BeginsCharacter(char byte)
{
    return (byte & 0xC0) != 0x80;
}

// Whether a control character from U+0080 to U+009F, which has two bytes, comes first.
bool BeginsControl(std::string_view text)
{
    return text.size() > 1 && text[0] == '\xC2' && static_cast<unsigned char>(text[1]) < 0xA0;
}

} // namespace

std::string ToText(double number)
{
    std::array<char, 32> buffer{};
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number, std::chars_format::general,
                                   significantDigits);
    return {buffer.data(), end.ptr};
}

std::string ToExactText(double number)
{
    std::array<char, 32> buffer{};
    return {buffer.data(), std::to_chars(buffer.data(), buffer.data() + buffer.size(), number).ptr};
}

std::string Printable(const std::string& text)
{
    std::string printable = text;
    std::replace_if(printable.begin(), printable.end(), IsControl, '?');
    for (std::size_t i = 0; i < printable.size(); ++i) {
        if (BeginsControl(std::string_view(printable).substr(i))) {
            printable.replace(i, 2, "?");
        }
    }
    return printable;
}

std::string PrintableLines(const std::string& text)
{
    std::string printable;
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find('\n', begin), text.size());
        printable += Printable(text.substr(begin, end - begin));
        printable += end < text.size() ? "\n" : "";
        begin = end + 1;
    }
    return printable;
}

std::string ValidUtf8(const std::string& text)
{
    std::string valid = text;
    if (!IsValidUtf8(text)) {
        std::replace_if(
            valid.begin(), valid.end(), [](char byte) { return (byte & 0x80) != 0; }, '?');
    }
    return valid;
}

std::string Shortened(const std::string& text, std::size_t characters)
{
    std::size_t begun = 0;
    const auto beyond = std::find_if(text.begin(), text.end(),
                                     [&](char byte) { return BeginsCharacter(byte) && begun++ == characters; });
    return beyond == text.end() ? text : std::string(text.begin(), beyond) + "…";
}

std::string QuotedCell(const std::string& text)
{
    std::string quoted = "\"";
    for (const char c : text) {
        quoted += c == '"' ? "\"\"" : std::string(1, c);
    }
    return quoted + "\"";
}

std::size_t CharacterCount(const std::string& text)
{
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), BeginsCharacter));
}

} // namespace oxd
