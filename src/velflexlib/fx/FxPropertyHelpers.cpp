#include "velflexlib/fx/FxPropertyHelpers.h"

#include "velstdlib/util/Log.h"
#include "velstdlib/util/header/HeaderText.h"

#include <boost/current_function.hpp>

#include <string>

namespace veltaris::velflexlib::fx {

CFxProperty ReadFxProperty(const velstdlib::util::CVELKeyToValueList& keys, std::string_view key,
                           const CFxProperty& defaultValue)
{
    const std::string text = keys.GetValue(key);
    if (text.empty())
        return defaultValue;
    auto property = ParseFxProperty(text);
    if (!property) {
        velstdlib::util::LogWarning(BOOST_CURRENT_FUNCTION, "Not a number with a unit");
        return defaultValue;
    }
    if (property->unit.empty())
        property->unit = defaultValue.unit;
    return *property;
}

void WriteFxProperty(velstdlib::util::CVELKeyToValueList& keys, std::string_view key, const CFxProperty& property)
{
    keys.SetValue(key, velstdlib::util::CleanHeaderText(FormatFxProperty(property)));
}

} // namespace veltaris::velflexlib::fx
