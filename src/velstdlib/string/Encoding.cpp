#include "velstdlib/string/Encoding.h"

#include "velstdlib/string/SystemCodePage.h"

#include <boost/nowide/convert.hpp>
#include <boost/nowide/utf/utf.hpp>
#include <boost/throw_exception.hpp>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <stdexcept>

namespace veltaris::velstdlib::string {

namespace {

using Utf8 = boost::nowide::utf::utf_traits<char>;
using namespace std::string_view_literals;

constexpr std::string_view utf8Mark = "\xEF\xBB\xBF";
constexpr std::array wideMarks{"\xFE\xFF"sv, "\xFF\xFE"sv, "\x00\x00\xFE\xFF"sv}; // UTF-32 LE begins as UTF-16 LE does

// What code page 1252 has where Latin-1 has control characters, from 80 to 9F.
constexpr std::array<char32_t, 32> cp1252Controls{0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                  0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                                  0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                  0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

char32_t Cp1252Character(char c)
{
    const auto byte = static_cast<unsigned char>(c);
    return byte >= 0x80 && byte < 0xA0 ? cp1252Controls.at(byte - 0x80U) : byte;
}

bool IsAscii(char c)
{
    return static_cast<unsigned char>(c) < 0x80;
}

// Most headers are ASCII from end to end: these are passed over eight at a time.
const char* AfterAscii(const char* at, const char* end)
{
    constexpr std::uint64_t topBits = 0x8080'8080'8080'8080;
    for (std::uint64_t block = 0; end - at >= static_cast<std::ptrdiff_t>(sizeof block); at += sizeof block) {
        std::memcpy(&block, at, sizeof block);
        if ((block & topBits) != 0)
            break;
    }
    return std::find_if_not(at, end, IsAscii);
}

} // namespace

bool IsValidUtf8(std::string_view bytes)
{
    const char* at = bytes.data();
    const char* const end = at + bytes.size();
    while ((at = AfterAscii(at, end)) != end) {
        if (!boost::nowide::utf::is_valid_codepoint(Utf8::decode(at, end)))
            return false;
    }
    return true;
}

void AppendAnalyzed(std::string& text, std::string bytes)
{
    if (!IsValidUtf8(bytes)) {
        if (std::ranges::any_of(wideMarks, [&](std::string_view mark) { return bytes.starts_with(mark); }))
            BOOST_THROW_EXCEPTION(std::runtime_error("Not yet handled"));
        text += AnsiToUtf8(bytes);
        return;
    }
    if (bytes.starts_with(utf8Mark))
        bytes.erase(0, utf8Mark.size());
    if (text.empty())
        text.swap(bytes); // a large header is not copied
    else
        text += bytes;
}

std::string Cp1252ToUtf8(std::string_view bytes)
{
    std::string text;
    text.reserve(bytes.size());
    for (const char c : bytes)
        Utf8::encode(Cp1252Character(c), std::back_inserter(text));
    return text;
}

std::string AnsiToUtf8(std::string_view bytes)
{
#ifdef _WIN32
    if (!IsSystemCodePageUtf8())
        return boost::nowide::narrow(SystemCodePageToWide(bytes));
#endif
    return Cp1252ToUtf8(bytes);
}

} // namespace veltaris::velstdlib::string
