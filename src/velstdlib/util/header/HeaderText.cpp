#include "velstdlib/util/header/HeaderText.h"

#include "velstdlib/string/Encoding.h"
#include "velstdlib/string/Texts.h"
#include "velstdlib/util/Log.h"

#include <boost/algorithm/string/replace.hpp>
#include <boost/current_function.hpp>

#include <algorithm>

namespace veltaris::velstdlib::util {

namespace {

bool BreaksLine(char c)
{
    return c == '\r' || c == '\n' || c == '\0';
}

// A quick check that settles most texts: ASCII without line breaks and other control characters, and without '#'.
bool IsPlain(std::string_view text)
{
    return std::ranges::all_of(text, [](char c) { return c >= ' ' && c <= '~' && c != '#'; });
}

} // namespace

std::string CleanHeaderText(std::string_view text)
{
    if (IsPlain(text))
        return std::string(text);
    std::string clean = string::IsValidUtf8(text) ? std::string(text) : string::Cp1252ToUtf8(text);
    std::ranges::replace_if(clean, BreaksLine, ' ');
    boost::algorithm::replace_all(clean, headerEndMark, "# !");
    if (clean != text)
        LogChangedText(BOOST_CURRENT_FUNCTION, clean);
    return clean;
}

void LogChangedText(const char* function, const std::string& written)
{
    LogWarning(function, string::FormatText(string::TextId::TextChangedForHeader, {written}));
}

} // namespace veltaris::velstdlib::util
