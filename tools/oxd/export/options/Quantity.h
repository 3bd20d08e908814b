// Numbers with units, as the user types them.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace oxd {

// A plain value. The unit has no prefix; if it is empty, the number is in the unit of what it is for.
struct Quantity
{
    double value = 0;
    std::string unit = {};
};

// A number with its unit or without, such as -2nm, in which a keyboard's "u" may stand for "µ".
std::optional<Quantity> ParseQuantity(std::string_view text);

// The same for what --offset takes. Throws a Failure for any other text.
Quantity ParseOffset(std::string_view text);

// The quantity as a number in `unit`, which may have a prefix. Throws a Failure, in which `what` names the quantity, if
// that is another kind of unit.
double InUnit(const Quantity& quantity, const std::string& unit, std::string_view what);

} // namespace oxd
