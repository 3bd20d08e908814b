#include "oxd/compare/Comparison.h"

#include "oxd/system/Text.h"

namespace oxd {

namespace {

// Two contents as text.
struct TextPair
{
    std::string a;
    std::string b;
};

std::string Quoted(const std::string& text)
{
    return "\"" + text + "\"";
}

std::string ContentText(const Content& content)
{
    if (const auto* const count = std::get_if<std::uint64_t>(&content)) {
        return std::to_string(*count);
    }
    const auto* const text = std::get_if<std::string>(&content);
    return text != nullptr ? Quoted(*text) : std::string();
}

// With as many digits as tell them apart.
TextPair NumberTexts(double a, double b)
{
    const TextPair texts{ToText(a), ToText(b)};
    return texts.a == texts.b ? TextPair{ToExactText(a), ToExactText(b)} : texts;
}

TextPair ContentTexts(const Content& a, const Content& b)
{
    const auto* const numberOfA = std::get_if<double>(&a);
    const auto* const numberOfB = std::get_if<double>(&b);
    return numberOfA != nullptr && numberOfB != nullptr ? NumberTexts(*numberOfA, *numberOfB)
                                                        : TextPair{ContentText(a), ContentText(b)};
}

// Both contents, that of A first.
std::string ContentsText(const Occurrence& occurrence, const std::string& unit)
{
    const TextPair texts = ContentTexts(occurrence.a, occurrence.b);
    std::string contents = texts.a + " | " + texts.b + (unit.empty() ? "" : " " + Printable(unit));
    if (!occurrence.raw || texts.a != texts.b) {
        return contents;
    }
    return contents + " (raw samples " + std::to_string(occurrence.raw->a) + " | " + std::to_string(occurrence.raw->b) +
           ")";
}

std::string PartText(const char* kind, const std::optional<Numbered>& part)
{
    return part ? kind + std::to_string(part->position) + " " + Quoted(part->name) : std::string();
}

std::string PlaceText(const Difference& difference)
{
    std::string path;
    for (const std::string& name : difference.place.path) {
        path += (path.empty() ? "information " : "/") + name;
    }
    return PartText("group ", difference.place.group) + PartText(", channel ", difference.place.channel) + path;
}

std::string LineText(const Occurrence& occurrence)
{
    return "line " + std::to_string(*occurrence.line) +
           (occurrence.point ? ", point " + std::to_string(*occurrence.point) : "");
}

// A group or a channel that only one file has is named by its place already; an item also has a value.
std::string SingleText(const Difference& difference)
{
    const Occurrence& contents = difference.largest;
    const bool isOnlyInA = std::holds_alternative<std::monostate>(contents.b);
    const bool isOnlyInB = std::holds_alternative<std::monostate>(contents.a);
    if (!isOnlyInA && !isOnlyInB) {
        return difference.what + ": " + ContentsText(contents, difference.unit);
    }
    const std::string text = difference.what + std::string(" only in ") + (isOnlyInA ? "A" : "B");
    const bool hasValue = difference.aspect == Aspect::Information && difference.what == "item";
    return hasValue ? text + ": " + ContentText(isOnlyInA ? contents.a : contents.b) : text;
}

// The largest of them, and then those that are to be shown.
std::string SeveralText(const Difference& difference)
{
    const char* const places = difference.largest.point ? " samples" : " lines";
    std::string text = difference.what + ": differs in " + std::to_string(difference.count) + places + ", most in " +
                       LineText(difference.largest) + ": " + ContentsText(difference.largest, difference.unit);
    for (const Occurrence& occurrence : difference.shown) {
        text += "\n  " + LineText(occurrence) + ": " + ContentsText(occurrence, difference.unit);
    }
    const std::uint64_t left = difference.count - difference.shown.size();
    return left > 0 && !difference.shown.empty() ? text + "\n  and " + std::to_string(left) + " more" : text;
}

// One line or several, the first of which names the place.
std::string DifferenceText(const Difference& difference)
{
    const std::string place = PlaceText(difference);
    const std::string heading = Printable(place) + (place.empty() ? "" : ": ");
    if (!difference.IsOfLines()) {
        return heading + Printable(SingleText(difference));
    }
    if (difference.count > 1) {
        return heading + SeveralText(difference);
    }
    return Printable(place) + ", " + LineText(difference.largest) + ": " + difference.what + ": " +
           ContentsText(difference.largest, difference.unit);
}

} // namespace

std::string ToText(const Comparison& comparison)
{
    if (comparison.differences.empty()) {
        return {};
    }
    std::string text = "A: " + Printable(comparison.a) + "\nB: " + Printable(comparison.b) + "\n";
    for (const Difference& difference : comparison.differences) {
        text += DifferenceText(difference) + "\n";
    }
    return text;
}

} // namespace oxd
