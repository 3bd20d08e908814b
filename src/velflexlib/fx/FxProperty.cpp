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

// Unit symbols that begin with the letter of an SI prefix without having one.
constexpr std::array<std::string_view, 9> plainSymbols{"m",   "m\u00B2", "m\u00B3", "T",   "Pa",
                                                       "mol", "min",     "px",      "Torr"};

// The length of the decimal number that the text begins with. An "e" that no digits follow is not part of it.
std::size_t NumberLength(std::string_view text)
{
    const std::size_t sign = text.starts_with('+') || text.starts_with('-') ? 1 : 0;
    double value = 0;
    const auto end = std::from_chars(text.data() + sign, text.data() + text.size(), value).ptr;
    return static_cast<std::size_t>(end - text.data());
}

// Symbols consist of letters, including all characters beyond ASCII.
constexpr bool IsSymbolCharacter(char c)
{
    const char folded = velstdlib::string::Folded(c);
    return (folded >= 'a' && folded <= 'z') || static_cast<unsigned char>(c) >= 0x80;
}

// The first symbol of a unit that has several, such as "m/s".
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

// Something only counts as a prefix if what follows it is a symbol, unlike in "a.u.", that has no prefix of its own,
// unlike in "ppm". So a unit without prefix is never split again when it is parsed once more.
std::string_view PrefixOf(std::string_view unit)
{
    const std::string_view prefix = LikelyPrefix(unit);
    const std::string_view rest = unit.substr(prefix.size());
    const bool fits = rest.empty() || (IsSymbolCharacter(rest.front()) && LikelyPrefix(rest).empty());
    return fits ? prefix : std::string_view();
}

// If anything else follows the number, as in "2,5 nm", the number means something else than was meant.
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
