// Parameters with a unit as the values of keys.
#pragma once

#include "velflexlib/fx/FxProperty.h"
#include "velstdlib/util/header/VELKeyToValue.h"

#include <string_view>

namespace veltaris::velflexlib::fx {

// The parameter under the key. A text without a unit is in the default's; the default when the key is missing, and,
// with a warning in the log, when its value is no such text.
CFxProperty ReadFxProperty(const velstdlib::util::CVELKeyToValueList& keys, std::string_view key,
                           const CFxProperty& defaultValue);

void WriteFxProperty(velstdlib::util::CVELKeyToValueList& keys, std::string_view key, const CFxProperty& property);

} // namespace veltaris::velflexlib::fx
