#include "oxd/export/options/Quantity.h"

#include "oxd/system/Failure.h"
#include "oxd/system/Unit.h"
#include "velflexlib/fx/FxProperty.h"

namespace oxd {

using veltaris::velflexlib::fx::ParseFxProperty;

std::optional<Quantity> ParseQuantity(std::string_view text)
{
    constexpr double micro = 1e-6;
    const auto number = ParseFxProperty(text);
    if (!number) {
        return std::nullopt;
    }
    const bool isMicro = number->unit.starts_with('u') && TakesPrefix(number->unit.substr(1));
    return isMicro ? Quantity{number->value * micro, number->unit.substr(1)} : Quantity{number->value, number->unit};
}

Quantity ParseOffset(std::string_view text)
{
    const auto offset = ParseQuantity(text);
    if (!offset) {
        throw Failure(ExitCode::Usage, "offset \"" + std::string(text) + "\"", "is no number, such as 2nm");
    }
    return *offset;
}

double InUnit(const Quantity& quantity, const std::string& unit, std::string_view what)
{
    if (quantity.unit.empty()) {
        return quantity.value;
    }
    const auto one = ParseFxProperty("1" + unit);
    if (!one || one->unit != quantity.unit) {
        throw Failure(ExitCode::Usage, std::string(what) + " in \"" + quantity.unit + "\"",
                      unit.empty() ? "the values have no unit" : "the values are in \"" + unit + "\"");
    }
    return quantity.value / one->value;
}

} // namespace oxd
