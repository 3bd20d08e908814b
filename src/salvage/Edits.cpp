#include "salvage/Edits.h"

#include <algorithm>
#include <set>

namespace veltaris::salvage {

namespace {

constexpr std::size_t mostDigits = 10; // of a number that a size may be

bool IsWritten(std::string_view number)
{
    return !number.empty() && number.size() <= mostDigits &&
           number.find_first_not_of(decimalDigits) == std::string_view::npos &&
           (number.size() == 1 || number.front() != '0');
}

} // namespace

bool IsOneEdit(std::string_view a, std::string_view b)
{
    if (a.size() < b.size())
        std::swap(a, b);
    if (a == b || a.size() - b.size() > 1)
        return false;
    const auto common = static_cast<std::size_t>(std::ranges::mismatch(a, b).in1 - a.begin());
    return a.substr(common + 1) == b.substr(a.size() == b.size() ? common + 1 : common);
}

std::vector<std::string> NumbersNear(std::string_view text)
{
    if (text.size() > mostDigits + 1)
        return {};
    std::set<std::string> numbers;
    const auto add = [&](std::size_t at, std::size_t length, std::string_view other) {
        std::string number(text);
        number.replace(at, length, other);
        if (number != text && IsWritten(number))
            numbers.insert(number);
    };
    for (std::size_t at = 0; at <= text.size(); ++at) {
        for (std::size_t digit = 0; digit < decimalDigits.size(); ++digit) {
            add(at, 0, decimalDigits.substr(digit, 1));
            if (at < text.size())
                add(at, 1, decimalDigits.substr(digit, 1));
        }
        if (at < text.size())
            add(at, 1, {});
    }
    return {numbers.begin(), numbers.end()};
}

} // namespace veltaris::salvage
