#include "velflexlib/fx/FxProperty.h"

#include "velstdlib/math/SIPrefix.h"
#include "velstdlib/string/FoldedText.h"
#include "velstdlib/string/NumberText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>

namespace veltaris::velflexlib::fx {

namespace {

// Symbols that begin like a prefix, but have none.
constexpr std::array<std::string_view, 9> plainSymbols{"m",   "m\u00B2", "m\u00B3", "T",   "Pa",
                                                       "mol", "min",     "px",      "Torr"};

// The length of the decimal number that the text begins with: an "e" without digits belongs to what follows.
std::size_t NumberLength(std::string_view text)
{
    const std::size_t sign = text.starts_with('+') || text.starts_with('-') ? 1 : 0;
    double value = 0;
    const auto end = std::from_chars(text.data() + sign, text.data() + text.size(), value).ptr;
    return static_cast<std::size_t>(end - text.data());
}

// Letters, also those beyond ASCII.
constexpr bool IsSymbolCharacter(char c)
{
    const char folded = velstdlib::string::Folded(c);
    return (folded >= 'a' && folded <= 'z') || static_cast<unsigned char>(c) >= 0x80;
}

// The first of the symbols that a unit such as "m/s" is made of.
std::string_view LeadingSymbol(std::string_view unit)
{
    const auto* const end = std::ranges::find_if_not(unit, IsSymbolCharacter);
    return {unit.begin(), end};
}

std::string_view LikelyPrefix(std::string_view unit)
{
    const bool plain = std::ranges::find(plainSymbols, LeadingSymbol(unit)) != plainSymbols.end();
    return plain ? std::string_view() : velstdlib::math::LeadingSIPrefix(unit);
}

// What is left behind a prefix is no further symbol ("a.u.") and has no prefix of its own ("ppm"), or else there is
// none: a unit, once split off, is never split again.
std::string_view PrefixOf(std::string_view unit)
{
    const std::string_view prefix = LikelyPrefix(unit);
    const std::string_view rest = unit.substr(prefix.size());
    const bool fits = rest.empty() || (IsSymbolCharacter(rest.front()) && LikelyPrefix(rest).empty());
    return fits ? prefix : std::string_view();
}

// Anything else behind the number, such as the rest of "2,5 nm", would change its meaning.
bool CanBeginUnit(char c)
{
    return IsSymbolCharacter(c) || c == '%';
}

} // namespace

std::optional<CFxProperty> ParseFxProperty(std::string_view text)
{
    using namespace velstdlib::string;
    text = WithoutTrailingSpace(WithoutLeadingSpace(text));
    const std::string_view number = text.substr(0, NumberLength(text));
    const std::string_view prefixedUnit = WithoutLeadingSpace(text.substr(number.size()));
    if (!prefixedUnit.empty() && !CanBeginUnit(prefixedUnit.front()))
        return std::nullopt;
    const std::string_view prefix = PrefixOf(prefixedUnit);
    const auto value = velstdlib::math::ParseSINumber(std::string(number).append(prefix));
    if (!value || !std::isfinite(*value))
        return std::nullopt;
    return CFxProperty{*value, std::string(prefixedUnit.substr(prefix.size()))};
}

std::string FormatFxProperty(const CFxProperty& property)
{
    std::string text = velstdlib::string::FormatDouble(property.value);
    if (!property.unit.empty())
        text.append(" ").append(property.unit);
    return text;
}

} // namespace veltaris::velflexlib::fx
