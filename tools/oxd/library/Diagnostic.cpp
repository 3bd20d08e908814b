#include "oxd/library/Diagnostic.h"

#include <algorithm>
#include <array>
#include <optional>

namespace oxd::diagnostic {

namespace {

// How a text of the library begins that is of little use to whoever only uses the tool, and what it means to them.
struct Translation
{
    std::string_view library;
    std::string_view user;
};

constexpr std::array translations{
    Translation{"The hed file is corrupted", "damaged, its header has bad content"},
    Translation{"The hed file has an unknown version", "it is of an unknown version,"},
    Translation{"std::bad_alloc", "not enough memory"},
};

bool Contains(std::string_view text, std::string_view part)
{
    return text.find(part) != std::string_view::npos;
}

// The rest of the line behind `mark`, which may itself be anywhere in a line.
std::optional<std::string_view> RestOfLine(std::string_view text, std::string_view mark)
{
    const std::size_t found = text.find(mark);
    if (found == std::string_view::npos) {
        return std::nullopt;
    }
    const std::string_view rest = text.substr(found + mark.size());
    return rest.substr(0, rest.find_first_of("\r\n"));
}

// "..." of [boost::errinfo_errno_*] = 2, "..."
std::optional<std::string_view> SystemError(std::string_view text)
{
    const auto item = RestOfLine(text, "errinfo_errno");
    if (!item) {
        return std::nullopt;
    }
    const std::size_t first = item->find('"');
    const std::size_t last = item->rfind('"');
    return first < last ? std::optional(item->substr(first + 1, last - first - 1)) : std::nullopt;
}

std::string_view MainLine(std::string_view text)
{
    const auto what = RestOfLine(text, "std::exception::what: ");
    const auto reason = SystemError(text).value_or(what.value_or(text));
    return reason.substr(0, reason.find_first_of("\r\n"));
}

} // namespace

bool IsOpenFailure(std::string_view text)
{
    return Contains(text, "CVELFileOpenException");
}

bool IsStreamFailure(std::string_view text)
{
    return Contains(text, "iostream error");
}

bool IsShortBuffer(std::string_view text)
{
    return Contains(text, "Buffer to small");
}

bool IsOutOfMemory(std::string_view text)
{
    const std::string_view line = MainLine(text);
    return line == "std::bad_alloc" || line == "Cannot allocate memory" || line == "Not enough space";
}

std::string Reason(std::string_view text)
{
    const std::string_view line = MainLine(text);
    const auto* const known = std::find_if(translations.begin(), translations.end(), [&](const Translation& candidate) {
        return line.starts_with(candidate.library);
    });
    if (known == translations.end()) {
        return std::string(line.substr(0, line.find(" Filename: ")));
    }
    return std::string(known->user).append(RestOfLine(line, "Version:").value_or(""));
}

} // namespace oxd::diagnostic
