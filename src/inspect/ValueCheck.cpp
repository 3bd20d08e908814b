#include "inspect/ValueCheck.h"

#include "velflexlib/fx/FxProperty.h"
#include "velstdlib/math/SIPrefix.h"
#include "velstdlib/string/FoldedText.h"
#include "velstdlib/string/NumberText.h"

#include <boost/lexical_cast/bad_lexical_cast.hpp>

#include <algorithm>
#include <array>
#include <cstdint>
#include <stdexcept>

namespace veltaris::inspect {

namespace str = velstdlib::string;

namespace {

template <class T>
std::optional<T> Parsed(std::string_view text)
try {
    return str::ParseNumber<T>(text);
} catch (const boost::bad_lexical_cast&) {
    return std::nullopt;
}

bool ConsistsOf(std::string_view text, std::string_view characters)
{
    return !text.empty() && text.find_first_not_of(characters) == std::string_view::npos;
}

// Whether a text that could not be read looks like a number that is only too large.
bool IsTooLarge(std::string_view text)
{
    if (text.starts_with('-') || text.starts_with('+'))
        text.remove_prefix(1);
    const bool isDecimal = ConsistsOf(text, "0123456789.eE+-") && text.front() >= '0' && text.front() <= '9';
    const auto exponent = text.find_first_of("eE");
    return isDecimal && (exponent == std::string_view::npos || exponent + 1 < text.size()) &&
           std::ranges::count(text, '.') <= 1 &&
           std::ranges::count_if(text, [](char c) { return (c | ' ') == 'e'; }) <= 1;
}

ValueFault Unreadable(const KeySpec& spec, std::string_view value, RuleId rule)
{
    const bool isTooLarge = IsTooLarge(value);
    if (isTooLarge && rule == RuleId::NoNumber)
        rule = RuleId::OutOfRange;
    return {rule, std::string(spec.taken), isTooLarge ? "is out of range" : "is not a number"};
}

std::optional<ValueFault> CheckInt(const KeySpec& spec, std::string_view value, RuleId rule)
{
    return Parsed<int>(value) ? std::nullopt : std::optional(Unreadable(spec, value, rule));
}

std::optional<ValueFault> CheckCount(const KeySpec& spec, std::string_view value, RuleId rule)
{
    const auto count = Parsed<int>(value);
    if (count && *count < 0)
        return ValueFault{RuleId::NegativeCount, "0", "is negative"};
    return count ? std::nullopt : std::optional(Unreadable(spec, value, rule));
}

std::optional<ValueFault> CheckUnsigned(const KeySpec& spec, std::string_view value)
{
    const auto number = Parsed<std::uint64_t>(value);
    if (!number)
        return Unreadable(spec, value, RuleId::NoNumber);
    if (!value.starts_with('-') || *number == 0)
        return std::nullopt;
    if (spec.kind == ValueKind::UnsignedCount)
        return ValueFault{RuleId::NegativeCount, "0", "is negative"};
    return ValueFault{RuleId::NumberCut, std::to_string(*number), "is negative and wraps around"};
}

// A number that is not 0 as it is written and became 0 as a double.
bool IsTooSmall(std::string_view text, double value)
{
    const std::string_view mantissa = text.substr(0, text.find_first_of("eE"));
    return value == 0 && mantissa.find_first_of("123456789") != std::string_view::npos;
}

std::optional<ValueFault> CheckAxisNumber(const KeySpec& spec, std::string_view value, bool isPrefixed)
{
    const auto number = isPrefixed ? velstdlib::math::ParseSINumber(value) : Parsed<double>(value);
    if (!number) {
        ValueFault fault = Unreadable(spec, value, RuleId::AxisNoNumber);
        if (isPrefixed && spec.pattern.ends_with("Range"))
            fault.taken = "1";
        return fault;
    }
    if (IsTooSmall(value, *number))
        return ValueFault{RuleId::NumberCut, "0", "is too small to be told from 0"};
    return std::nullopt;
}

// The numbers that both texts begin with, as long as something else is behind neither.
std::optional<ValueFault> CheckIntPair(const KeySpec& spec, std::string_view value)
{
    const auto comma = value.find(',');
    if (comma == std::string_view::npos)
        return std::nullopt; // the library does not open the file, which is found there
    std::string_view rest = value.substr(comma + 1);
    const std::array fields{value.substr(0, comma), rest.substr(0, rest.find(','))};
    for (const std::string_view field : fields) {
        if (Parsed<int>(field))
            continue;
        try {
            return ValueFault{RuleId::NumberCut, std::to_string(str::ParseLeadingInt(field)), "has more than a number"};
        } catch (const std::logic_error&) {
            return Unreadable(spec, field, RuleId::NoNumber);
        }
    }
    return std::nullopt;
}

std::optional<ValueFault> CheckOneOf(const KeySpec& spec, std::string_view value,
                                     std::initializer_list<std::string_view> words, RuleId rule, const char* reason)
{
    const auto isWord = [&](std::string_view word) { return str::EqualFolded(word, value); };
    if (std::ranges::any_of(words, isWord))
        return std::nullopt;
    return ValueFault{rule, std::string(spec.taken), reason};
}

} // namespace

std::optional<ValueFault> CheckValue(const KeySpec& spec, std::string_view value, bool isPrefixed)
{
    switch (spec.kind) {
    case ValueKind::Version:
    case ValueKind::Size:
        return CheckInt(spec, value, RuleId::SizeNoNumber);
    case ValueKind::Int:
        return CheckInt(spec, value, RuleId::NoNumber);
    case ValueKind::Count:
        return CheckCount(spec, value, RuleId::NoNumber);
    case ValueKind::Channels:
        return CheckCount(spec, value, RuleId::SizeNoNumber);
    case ValueKind::Unsigned:
    case ValueKind::UnsignedCount:
        return CheckUnsigned(spec, value);
    case ValueKind::AxisNumber:
        return CheckAxisNumber(spec, value, isPrefixed);
    case ValueKind::IntPair:
        return CheckIntPair(spec, value);
    case ValueKind::Parameter:
        return velflexlib::fx::ParseFxProperty(value) ? std::nullopt
                                                      : std::optional(Unreadable(spec, value, RuleId::NoNumber));
    case ValueKind::Flag:
        return CheckOneOf(spec, value, {"1", "0", "true", "false", "yes", "no"}, RuleId::NoNumber,
                          "is neither yes nor no");
    case ValueKind::Storage:
        return CheckOneOf(spec, value, {spec.taken}, RuleId::OtherStorage, "is not how samples are read");
    case ValueKind::Text:
    case ValueKind::Link:
        return std::nullopt;
    }
    return std::nullopt;
}

} // namespace veltaris::inspect
