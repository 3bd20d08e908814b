#include "velstdlib/string/NumberText.h"

#include "velstdlib/string/FoldedText.h"

#include <boost/lexical_cast/bad_lexical_cast.hpp>
#include <boost/throw_exception.hpp>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>
#include <stdexcept>

namespace veltaris::velstdlib::string {

namespace {

template <class T>
[[noreturn]] void ThrowNoNumber()
{
    BOOST_THROW_EXCEPTION(boost::bad_lexical_cast(typeid(std::string_view), typeid(T)));
}

struct SignedText
{
    bool negative;
    std::string_view rest;
};

SignedText SplitSign(std::string_view text)
{
    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+'))
        text.remove_prefix(1);
    return {negative, text};
}

constexpr bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

std::optional<std::uint64_t> ParseDigits(std::string_view digits)
{
    std::uint64_t value = 0;
    const char* const end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, value);
    if (error != std::errc() || stop != end)
        return std::nullopt;
    return value;
}

std::optional<int> ParseSignedInt(const SignedText& parts)
{
    const auto magnitude = ParseDigits(parts.rest);
    const std::uint64_t limit = std::uint64_t{std::numeric_limits<int>::max()} + (parts.negative ? 1 : 0);
    if (!magnitude || *magnitude > limit)
        return std::nullopt;
    const auto value = static_cast<std::int64_t>(*magnitude);
    return static_cast<int>(parts.negative ? -value : value);
}

struct Spelling
{
    std::string_view text;
    double value;
};

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

// Old files spell infinities and NaNs as the run-time library of their time did. These are matched exactly.
constexpr std::array<Spelling, 6> legacySpellings{{{"1.#INF", infinity},
                                                   {"-1.#INF", -infinity},
                                                   {"1.#IND", notANumber},
                                                   {"1.#QNAN", notANumber},
                                                   {"-1.#IND", -notANumber},
                                                   {"-1.#QNAN", -notANumber}}};

std::optional<double> ParseLegacySpelling(std::string_view text)
{
    const auto found = std::ranges::find(legacySpellings, text, &Spelling::text);
    return found == legacySpellings.end() ? std::nullopt : std::optional(found->value);
}

std::optional<double> ParseUnsignedNonFinite(std::string_view text)
{
    if (EqualFolded(text, "inf") || EqualFolded(text, "infinity"))
        return infinity;
    if (!EqualFolded(text.substr(0, 3), "nan"))
        return std::nullopt;
    const std::string_view payload = text.substr(3);
    const bool bracketed = payload.size() >= 2 && payload.front() == '(' && payload.back() == ')';
    return payload.empty() || bracketed ? std::optional(notANumber) : std::nullopt;
}

double ExponentOf(std::string_view text)
{
    const SignedText parts = SplitSign(text);
    const auto magnitude = static_cast<double>(ParseDigits(parts.rest).value_or(std::numeric_limits<int>::max()));
    return parts.negative ? -magnitude : magnitude;
}

// A number too small for a double is 0, as std::strtod has it; one too large is no number. `text` is either.
std::optional<double> ParseTinyOrHuge(std::string_view text)
{
    const auto mantissa = text.substr(0, text.find_first_of("eE"));
    const auto exponent = mantissa.size() < text.size() ? ExponentOf(text.substr(mantissa.size() + 1)) : 0;
    const auto point = std::min(mantissa.find('.'), mantissa.size());
    const auto firstDigit = mantissa.find_first_of("123456789");
    const auto magnitude = static_cast<double>(point) - static_cast<double>(firstDigit) + exponent;
    return magnitude < 0 ? std::optional(0.0) : std::nullopt;
}

std::optional<double> ParseUnsignedDecimal(std::string_view text)
{
    if (text.empty() || !(IsDigit(text.front()) || text.front() == '.'))
        return std::nullopt;
    double value = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    if (stop != end)
        return std::nullopt;
    if (error == std::errc::result_out_of_range)
        return ParseTinyOrHuge(text);
    return error == std::errc() ? std::optional(value) : std::nullopt;
}

std::optional<double> ParseSignedDouble(std::string_view text)
{
    const SignedText parts = SplitSign(text);
    auto value = ParseUnsignedNonFinite(parts.rest);
    if (!value)
        value = ParseUnsignedDecimal(parts.rest);
    if (value && parts.negative)
        value = -*value;
    return value;
}

} // namespace

template <>
int ParseNumber<int>(std::string_view text)
{
    const auto value = ParseSignedInt(SplitSign(text));
    if (!value)
        ThrowNoNumber<int>();
    return *value;
}

template <>
std::uint64_t ParseNumber<std::uint64_t>(std::string_view text)
{
    const SignedText parts = SplitSign(text);
    const auto magnitude = ParseDigits(parts.rest);
    if (!magnitude)
        ThrowNoNumber<std::uint64_t>();
    return parts.negative ? std::uint64_t{0} - *magnitude : *magnitude;
}

template <>
double ParseNumber<double>(std::string_view text)
{
    auto value = ParseSignedDouble(text);
    if (!value)
        value = ParseLegacySpelling(text);
    if (!value)
        ThrowNoNumber<double>();
    return *value;
}

int ParseLeadingInt(std::string_view text)
{
    SignedText parts = SplitSign(WithoutLeadingSpace(text));
    const auto* const end = std::ranges::find_if_not(parts.rest, IsDigit);
    parts.rest = {parts.rest.begin(), end};
    if (parts.rest.empty())
        throw std::invalid_argument("invalid stoi argument");
    const auto value = ParseSignedInt(parts);
    if (!value)
        throw std::out_of_range("stoi argument out of range");
    return *value;
}

std::string FormatDouble(double value)
{
    std::array<char, 32> text{};
    const auto result = std::to_chars(text.begin(), text.end(), value, std::chars_format::general, 6);
    return {text.begin(), result.ptr};
}

} // namespace veltaris::velstdlib::string
